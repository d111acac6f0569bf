#!/usr/bin/env bash
# Builds the API reference from the public headers, as HTML and as a Qt help
# file (WQGeneral.qch, for Qt Creator and Qt Assistant), and fails on any
# Doxygen warning (an undocumented public name, a broken reference, a bad
# command), on any name in the overview pages or the headers' comments that
# is not a documented symbol (scripts/docs-names.py), and on a help file that
# is missing or does not hold the reference.
# Usage: scripts/docs-check.sh [OUTPUT_DIR]   (default build-docs)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-build-docs}
case $out in /*) ;; *) out=$root/$out ;; esac
command -v doxygen >/dev/null || { echo "doxygen is not installed (make docs installs it)" >&2; exit 1; }
qhg=$(qtpaths6 --query QT_HOST_LIBEXECS 2>/dev/null || echo /usr/lib/qt6/libexec)/qhelpgenerator
[ -x "$qhg" ] || qhg=/usr/lib/qt6/libexec/qhelpgenerator
[ -x "$qhg" ] || { echo "qhelpgenerator is not installed (make docs installs it)" >&2; exit 1; }
mkdir -p "$out"
rm -rf "$out/html" "$out/WQGeneral.qch"
cd "$root"
# qhelpgenerator is a Qt program: it wants a runtime folder.
XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$out} WQ_DOCS_OUT=$out WQ_QHG=$qhg doxygen docs/Doxyfile >"$out/doxygen.log" 2>&1 \
  || { cat "$out/doxygen.log" >&2; exit 1; }
log=$out/warnings.log
if [ -s "$log" ]; then
  cat "$log" >&2
  echo "docs: $(grep -c 'warning:' "$log" || true) warning(s); see $log" >&2
  exit 1
fi
# Doxygen links what it knows and leaves any other name as plain text: every
# name the overview pages and the comments use must be a documented one.
python3 scripts/docs-names.py "$out/WQGeneral.tags" \
  || { echo "docs: names above are not in the reference" >&2; exit 1; }
# The help file is an SQLite database: its namespace, its pages and its index.
python3 - "$out/WQGeneral.qch" <<'EOF' || { cat "$out/doxygen.log" >&2; exit 1; }
import sqlite3, sys
try:
    db = sqlite3.connect(f"file:{sys.argv[1]}?mode=ro", uri=True)
    namespace = db.execute("SELECT Name FROM NamespaceTable").fetchone()[0]
    pages = {name for (name,) in db.execute("SELECT Name FROM FileNameTable")}
    keywords = {name for (name,) in db.execute("SELECT Name FROM IndexTable")}
except (sqlite3.Error, TypeError) as error:
    sys.exit(f"docs: {sys.argv[1]} is not a Qt help file ({error})")
wanted = {"index.html", "classwq_1_1WQDate.html"}
if namespace != "org.wqgeneral.wqgeneral" or not wanted <= pages or "wq::WQDate" not in keywords:
    sys.exit(f"docs: {sys.argv[1]} does not hold the reference (namespace {namespace}, "
             f"{len(pages)} pages, {len(keywords)} keywords)")
print(f"docs: Qt help file with {len(pages)} pages and {len(keywords)} keywords")
EOF
echo "docs: no warnings, every name resolves; open $out/html/index.html or $out/WQGeneral.qch"
