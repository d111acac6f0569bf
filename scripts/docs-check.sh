#!/usr/bin/env bash
# Builds the API reference from the public headers and fails on any Doxygen
# warning (an undocumented public name, a broken reference, a bad command) and
# on any name in the overview pages or the headers' comments that is not a
# documented symbol (scripts/docs-names.py).
# Usage: scripts/docs-check.sh [OUTPUT_DIR]   (default build-docs)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-build-docs}
case $out in /*) ;; *) out=$root/$out ;; esac
command -v doxygen >/dev/null || { echo "doxygen is not installed (make docs installs it)" >&2; exit 1; }
mkdir -p "$out"
rm -rf "$out/html"
cd "$root"
WQ_DOCS_OUT=$out doxygen docs/Doxyfile
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
echo "docs: no warnings, every name resolves; open $out/html/index.html"
