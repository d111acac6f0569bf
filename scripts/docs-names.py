#!/usr/bin/env python3
"""Every framework name that the overview pages (docs/*.md, docs/*.dox) and
the public headers' /// comments mention must be a documented symbol of the
API reference (a class, a function, a constant or a member of one) or a
public header.

Usage: docs-names.py TAGFILE   (Doxygen's tag file of the reference)
Prints each name that resolves to nothing, with where it is, and exits 1.
"""
import pathlib
import re
import sys
import xml.etree.ElementTree as ET

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Functions of others that the texts name unqualified, on purpose. Qt's and
# the standard library's own qualified names (Q..., q..., std::...) are never
# checked.
FOREIGN = {
    "what",         # std::exception::what(), which the exceptions fill in
    "tr",           # the tr() of Qt classes, and of the string tables (a macro declares it)
    "main",         # the application's main()
    "top",          # QRectF::top(), which WQRect is not
    "deleteLater",  # QObject::deleteLater()
}
# Names that are the project's, not symbols: the package, its CMake targets
# (WQGeneral::Core) and its catalogue files (WQGeneral_de.qm).
PROJECT = re.compile(r"WQGeneral(?:$|::[A-Z]\w*$|_)")

FUNCTION = re.compile(r"(?<![\w:.>-])((?:[A-Za-z_]\w*::)*[A-Za-z_]\w*)\(\)")
FRAMEWORK = re.compile(r"(?<![\w:])(?:wq::)?((?:WQ[A-Z]|kWQ|RZ[A-Z]|kDefaultsKey_)\w*(?:::\w+)*)(\.\.\.|\.h\b)?")


def documented_names(tagfile):
    names = set()
    for compound in ET.parse(tagfile).getroot():
        kind = compound.get("kind")
        owner = compound.findtext("name") or ""
        if kind in ("class", "struct", "union", "namespace"):
            parts = owner.split("::")
            names.update("::".join(parts[i:]) for i in range(len(parts)))
        for member in compound.findall("member"):
            name = member.findtext("name")
            names.add(name)
            if kind in ("class", "struct", "union"):
                parts = owner.split("::") + [name]
                names.update("::".join(parts[i:]) for i in range(len(parts) - 1))
            if member.get("kind") == "enumeration":
                # Enumerators of a scoped enum are named through it.
                for value in compound.findall("member[@kind='enumvalue']"):
                    names.add(name + "::" + value.findtext("name"))
    return names


def texts():
    for page in sorted((ROOT / "docs").glob("*.md")) + sorted((ROOT / "docs").glob("*.dox")):
        for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
            yield page, number, line
    for header in sorted(ROOT.glob("*/include/WQGeneral/**/*.h")):
        for number, line in enumerate(header.read_text(encoding="utf-8").splitlines(), 1):
            comment = line.split("///", 1)
            if len(comment) == 2:
                yield header, number, comment[1]


def foreign(name):
    first = name.split("::", 1)[0]
    return (name in FOREIGN or first == "std" or re.match(r"Q[A-Z]", first) is not None
            or re.match(r"q[A-Z]", first) is not None)


def main():
    names = documented_names(sys.argv[1])
    names.update(header.name for header in ROOT.glob("*/include/WQGeneral/**/*.h"))
    missing = []
    for path, number, line in texts():
        where = f"{path.relative_to(ROOT)}:{number}"
        for match in FUNCTION.finditer(line):
            name = match.group(1).removeprefix("wq::")
            if not foreign(name) and name not in names:
                missing.append(f"{where}: {name}() is not a documented function")
        for match in FRAMEWORK.finditer(line):
            name, suffix = match.group(1), match.group(2) or ""
            if PROJECT.match(name):
                continue
            if suffix == "...":  # a family of names, as kWQCurrencyKey_...
                ok = any(n.startswith(name) for n in names)
            else:
                ok = name + suffix in names
            if not ok:
                missing.append(f"{where}: {name}{suffix} names no documented symbol or public header")
    for entry in dict.fromkeys(missing):
        print(entry, file=sys.stderr)
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
