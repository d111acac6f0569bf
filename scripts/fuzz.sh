#!/usr/bin/env bash
# Runs every fuzz target for the given number of seconds, starting from the
# repository's corpus and crash regressions (fuzz/corpus/<target>,
# fuzz/regressions/<target>) and keeping what it finds in the build folder.
# A crash's input belongs in fuzz/regressions/<target> once it is fixed: the
# test suite replays it from then on.
set -euo pipefail
seeds=$(cd "$(dirname "$0")/../fuzz" && pwd)
build=${1:-build-fuzz}
seconds=${2:-30}
status=0
for f in "$build"/fuzz/fuzz_*; do
  [ -x "$f" ] || continue
  name=$(basename "$f")
  corpus="$build/corpus/$name"
  mkdir -p "$corpus"
  inputs=("$corpus" "$seeds/corpus/$name")
  if [ -d "$seeds/regressions/$name" ]; then inputs+=("$seeds/regressions/$name"); fi
  echo "=== $name ($seconds s)"
  # A slow input (a quadratic path) or a runaway allocation counts as a failure.
  if ! ASAN_OPTIONS=detect_leaks=0 "$f" -max_total_time="$seconds" -print_final_stats=1 -timeout=30 -rss_limit_mb=2048 \
       -artifact_prefix="$build/crash-$name-" "${inputs[@]}" 2>"$build/$name.log"; then
    echo "$name found a failure; see $build/$name.log"
    tail -40 "$build/$name.log"
    status=1
  fi
  grep -E 'stat::number_of_executed_units|Done' "$build/$name.log" | tail -2 || true
done
exit $status
