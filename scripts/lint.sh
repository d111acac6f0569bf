#!/usr/bin/env bash
# clang-tidy (checks in .clang-tidy) and clazy over the sources of core/,
# widgets/, quick/ and tools/, with the compile commands of a build folder; their own
# headers are checked with them, Qt's and the generated ones are not. Quiet
# and exit 0 when nothing is found; otherwise the findings and exit 1.
#
#   scripts/lint.sh <build>       (configured with CMAKE_EXPORT_COMPILE_COMMANDS)
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:?usage: lint.sh <build folder>}" && pwd)
jobs=${JOBS:-$(nproc)}
database=$build/compile_commands.json
[ -e "$database" ] || { echo "no $database (configure with -DCMAKE_EXPORT_COMPILE_COMMANDS=ON)" >&2; exit 1; }
# The sources as they are: a unity build's merged files are taken apart
# into their sources (with the same command), and the build's precompiled
# headers are left out (GCC's, which clang cannot read; a missing include
# shows without them too).
log=$(mktemp -d)
trap 'rm -rf "$log"' EXIT
mkdir "$log/db"
mapfile -t sources < <(python3 - "$database" "$here" "$log/db/compile_commands.json" <<'EOF'
import json, re, sys
database, root, out = sys.argv[1:4]
layers = tuple(f"{root}/{layer}/" for layer in ("core", "widgets", "quick", "tools"))
entries = []
for entry in json.load(open(database)):
    entry["command"] = re.sub(r" -Winvalid-pch| -include \S*cmake_pch\.hxx", "", entry["command"])
    merged = entry["file"]
    if re.search(r"/Unity/unity_[0-9]+_cxx\.cxx$", merged):
        for source in re.findall(r'^#include "([^"]+)"', open(merged).read(), re.M):
            entries.append(dict(entry, file=source, command=entry["command"].replace(merged, source)))
    else:
        entries.append(entry)
json.dump(entries, open(out, "w"))
print("\n".join(sorted({entry["file"] for entry in entries if entry["file"].startswith(layers)})))
EOF
)
# moc's output must exist for the sources to parse: their components'
# autogen targets, named by the include folders of their compile commands.
mapfile -t autogen < <(grep -oE '/[A-Za-z0-9_]+_autogen/include' "$database" \
  | sed -E 's#^/(.*)/include$#\1#' | grep -E '^wq_(core|widgets|quick)_' | sort -u)
[ ${#autogen[@]} -eq 0 ] || cmake --build "$build" --target "${autogen[@]}" -j "$jobs" >/dev/null
[ ${#sources[@]} -gt 0 ] || { echo "no sources of core/, widgets/, quick/ or tools/ in $database" >&2; exit 1; }
headers="^$here/(core|widgets|quick|tools)/"

# clazy's level 0 and 1, but:
#  non-pod-global-static: the framework's few global statics (default
#    formatters, translation tables) are intended and built once;
#  qstring-allocations is level 2 and stays out.
clazy_checks=level0,level1,no-non-pod-global-static

start=$(date +%s)
# The newer clang-tidy where Debian has it: the same checks in half the time.
tidy=clang-tidy
command -v clang-tidy-22 >/dev/null && tidy=clang-tidy-22
printf '%s\n' "${sources[@]}" | xargs -P "$jobs" -I{} sh -c '
  out=$1/$(echo "$2" | tr / _)
  "$6" -p "$3" --quiet -header-filter="$4" "$2" >"$out.tidy" 2>&1 || true
  clazy-standalone -p "$3/compile_commands.json" -checks="$5" -header-filter="$4" "$2" >"$out.clazy" 2>&1 || true
' sh "$log" {} "$log/db" "$headers" "$clazy_checks" "$tidy"

# A header's finding shows once, however many sources include it.
# Only diagnostics at a place count: clazy also prints notes about its own
# limits ("internal error: couldn't find method") without one.
findings=$(cat "$log"/*.tidy "$log"/*.clazy | grep -E ':[0-9]+:[0-9]+: (warning|error):' | sort -u || true)
if [ -n "$findings" ]; then
  # The findings with their context lines, each header's once.
  cat "$log"/*.tidy "$log"/*.clazy | awk '/:[0-9]+:[0-9]+: (warning|error):/ { show = !seen[$0]++ } show' >&2
  echo "lint: $(wc -l <<<"$findings") findings in ${#sources[@]} sources" >&2
  exit 1
fi
echo "lint: clang-tidy and clazy clean over ${#sources[@]} sources ($(( $(date +%s) - start )) s)"
