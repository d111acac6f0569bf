#!/usr/bin/env bash
# Runs every benchmark program built in the given build folder.
set -euo pipefail
build=${1:-build-bench}
status=0
for b in "$build"/bench/bench_*; do
  [ -x "$b" ] || continue
  echo "=== $(basename "$b")"
  "$b" --benchmark_min_time=0.2 || status=1
done
exit $status
