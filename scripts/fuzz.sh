#!/usr/bin/env bash
# Runs every fuzz target for the given number of seconds, keeping its corpus.
set -euo pipefail
build=${1:-build-fuzz}
seconds=${2:-30}
status=0
for f in "$build"/fuzz/fuzz_*; do
  [ -x "$f" ] || continue
  name=$(basename "$f")
  corpus="$build/corpus/$name"
  mkdir -p "$corpus"
  echo "=== $name ($seconds s)"
  # A slow input (a quadratic path) or a runaway allocation counts as a failure.
  if ! ASAN_OPTIONS=detect_leaks=0 "$f" -max_total_time="$seconds" -print_final_stats=1 -timeout=30 -rss_limit_mb=2048 \
       -artifact_prefix="$build/crash-$name-" "$corpus" 2>"$build/$name.log"; then
    echo "$name found a failure; see $build/$name.log"
    tail -40 "$build/$name.log"
    status=1
  fi
  grep -E 'stat::number_of_executed_units|Done' "$build/$name.log" | tail -2 || true
done
exit $status
