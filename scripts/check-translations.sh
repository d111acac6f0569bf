#!/bin/bash
# Fails when translations/*.ts differ from what lupdate extracts from the
# sources now (a text added, changed or dropped without `make translations`),
# or when a language catalogue is unfinished.
# Usage: check-translations.sh [LUPDATE]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$root"/translations/*.ts "$scratch"/
bash "$root/scripts/update-translations.sh" "${1:-/usr/lib/qt6/bin/lupdate}" "$scratch"
if ! diff -u "$root/translations" "$scratch" --exclude=CMakeLists.txt; then
  echo "translations/*.ts are out of date: run 'make translations' and translate the new texts" >&2
  exit 1
fi
# Each language's catalogue is complete and keeps the English text's
# placeholders (%@), mnemonics (&) and paragraph breaks.
python3 - "$root"/translations/WQGeneral_*.ts <<'PY'
import sys
import xml.etree.ElementTree as ET
failed = False
for path in sys.argv[1:]:
    root = ET.parse(path).getroot()
    # The texts are English already: the English catalogue only ends the
    # search for a language, and its messages stay empty.
    if root.get("language", "").startswith("en"):
        continue
    for message in root.iter("message"):
        source = message.findtext("source") or ""
        translation = message.find("translation")
        text = translation.text or ""
        if translation.get("type") == "unfinished" or not text:
            print(f"{path}: not translated: {source!r}", file=sys.stderr)
            failed = True
        elif any(text.count(mark) != source.count(mark) for mark in ("%@", "&", "\n\n")):
            print(f"{path}: placeholders, mnemonics or paragraphs differ: {source!r}", file=sys.stderr)
            failed = True
sys.exit(1 if failed else 0)
PY
