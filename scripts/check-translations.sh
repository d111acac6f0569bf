#!/bin/bash
# Fails when translations/*.ts differ from what lupdate extracts from the
# sources now (a text added, changed or dropped without `make translations`).
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
