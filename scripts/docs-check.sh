#!/usr/bin/env bash
# Builds the API reference from the public headers and fails on any Doxygen
# warning (an undocumented public name, a broken reference, a bad command).
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
echo "docs: no warnings; open $out/html/index.html"
