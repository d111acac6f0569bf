#!/usr/bin/env bash
# Compares the shared libraries of a build folder with the ABI recorded under
# abi/ and fails on anything an application linked against the recorded ABI
# would notice: a removed symbol, or a changed function, variable or type
# behind one. Added symbols are reported and pass.
#
#   scripts/abi-check.sh <build>            check
#   scripts/abi-check.sh --record <build>   re-record abi/ from <build>
#
# Only declarations from the layer's public headers (and those of the layers
# below it) count. The recorded files carry no path of this machine and no
# source line, so that any checkout and build folder records the same text.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
record=0
if [ "${1:-}" = "--record" ]; then record=1; shift; fi
build=$(cd "${1:?usage: abi-check.sh [--record] <build folder>}" && pwd)
abi_dir=$here/abi

# The recorded descriptions are those of x86-64 (type sizes, calling
# convention); elsewhere there is nothing to compare with.
if [ "$(uname -m)" != "x86_64" ]; then
  echo "ABI check skipped: the recorded ABI is that of x86_64, this is $(uname -m)"
  exit 0
fi

# <library name> <its layer and the layers below it>
libraries=(
  "Core core"
  "Widgets widgets core"
  "Quick quick core"
)

common=(--exported-interfaces-only --drop-private-types)
recording=(--no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --drop-undefined-syms)

header_options() {   # <option> <layer>...
  local option=$1 layer; shift
  for layer in "$@"; do
    printf '%s\n' "$option" "$here/$layer/include" "$option" "$build/$layer/include"
  done
}

record_one() {   # <name> <layer>...
  local name=$1 layer=$2; shift
  local so=$build/$layer/libWQGeneral$name.so.0 out=$abi_dir/libWQGeneral$name.abi
  [ -e "$so" ] || { echo "not built: $so" >&2; return 1; }
  mapfile -t headers < <(header_options --headers-dir "$@")
  abidw "${common[@]}" "${recording[@]}" "${headers[@]}" --out-file "$out.tmp" "$so"
  # A translation unit's name is the path the compiler was given: relative
  # to the build folder, or absolute when the build folder is elsewhere.
  sed -E -e "s#(<abi-instr [^>]*path=')(\.\./)+#\1#" -e "s#(<abi-instr [^>]*path=')$here/#\1#" \
    "$out.tmp" | xz -9 -T1 -c > "$out.xz"
  rm -f "$out.tmp"
  echo "recorded $(basename "$out").xz"
}

# A library and baseline already compared with this script give the same
# answer again: remembered by their hashes, so that an unchanged build is
# checked at once.
fingerprint() {   # <file>...
  sha256sum "$@" "$here/scripts/abi-check.sh" | cut -d' ' -f1 | tr -d '\n'
}

check_one() {   # <name> <layer>...
  local name=$1 layer=$2; shift
  local so=$build/$layer/libWQGeneral$name.so.0 baseline=$abi_dir/libWQGeneral$name.abi.xz
  local memo=$build/abi-check/libWQGeneral$name.passed
  if [ ! -e "$so" ]; then
    echo "libWQGeneral$name.so.0: not built, not checked"
    return 0
  fi
  if [ ! -e "$baseline" ]; then
    echo "libWQGeneral$name.so.0: no recorded ABI in abi/ (make abi-baseline)" >&2
    return 1
  fi
  local print
  print=$(fingerprint "$so" "$baseline")
  if [ -e "$memo" ] && [ "$(cat "$memo")" = "$print" ]; then
    echo "libWQGeneral$name.so.0: ABI unchanged since the last check"
    return 0
  fi
  # The recorded side has no private types (dropped when it was recorded) and
  # no source locations, so the new side is not filtered by headers either:
  # with --hd2 every recorded type looked private, and a changed class passed.
  local report status=0
  # The recorded text is kept compressed (it is about a megabyte a library).
  local recorded=$build/abi-check/libWQGeneral$name.abi
  mkdir -p "$(dirname "$recorded")"
  xz -dc "$baseline" > "$recorded"
  report=$(abidiff "${common[@]}" --fail-no-debug-info --suppressions "$abi_dir/suppressions" \
    "$recorded" "$so") || status=$?
  # abidiff's status is a bit set: 1 error, 2 usage, 4 some change,
  # 8 a change known to break applications.
  if (( status & 3 )); then
    echo "libWQGeneral$name.so.0: abidiff failed ($status)" >&2
    printf '%s\n' "$report" >&2
    return 1
  fi
  # Additions alone pass; whatever else changed (a function's or a type's
  # shape, a removal) does not.
  local changes
  changes=$(printf '%s\n' "$report" | grep -oE '(^|[^0-9])[1-9][0-9]* (Removed|Changed)' || true)
  if (( status & 8 )) || [ -n "$changes" ]; then
    echo "libWQGeneral$name.so.0: incompatible ABI change against abi/libWQGeneral$name.abi.xz" >&2
    printf '%s\n' "$report" >&2
    return 1
  fi
  if (( status & 4 )); then
    echo "libWQGeneral$name.so.0: compatible, with additions (make abi-baseline records them):"
    printf '%s\n' "$report" | sed 's/^/  /'
  else
    echo "libWQGeneral$name.so.0: ABI unchanged"
  fi
  mkdir -p "$(dirname "$memo")"
  printf '%s' "$print" > "$memo"
}

run=check_one
if [ $record -eq 1 ]; then run=record_one; mkdir -p "$abi_dir"; fi

# Two libraries at a time: reading the debug information is what takes time.
failed=0
running=0
for entry in "${libraries[@]}"; do
  if [ $running -ge 2 ]; then
    wait -n || failed=1
    running=$((running - 1))
  fi
  # shellcheck disable=SC2086
  $run $entry &
  running=$((running + 1))
done
while [ $running -gt 0 ]; do
  wait -n || failed=1
  running=$((running - 1))
done
exit $failed
