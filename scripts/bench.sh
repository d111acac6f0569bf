#!/usr/bin/env bash
# Runs every benchmark program built in the given build folder, then gathers
# their results into <build>/bench.json and prints the table of targets.
# Each program writes <build>/bench-results/<program>.json; a script that
# measures something itself adds target rows there with
#   "$build/bench/wq_bench_report" add "$WQ_BENCH_RESULTS" <program> <target> <value> <unit> '>='|'<=' <limit> [detail]
# WQ_BENCH_STRICT=1 makes a target that does not hold fail the run.
set -euo pipefail
build=${1:-build-bench}
export WQ_BENCH_RESULTS="$build/bench-results"
rm -rf "$WQ_BENCH_RESULTS"
mkdir -p "$WQ_BENCH_RESULTS"
status=0
for b in "$build"/bench/bench_*; do
  [ -x "$b" ] || continue
  echo "=== $(basename "$b")"
  "$b" --benchmark_min_time=0.2 || status=1
done
# Scripts that compare whole processes (bench/*.sh), given the build folder.
for s in bench/*.sh; do
  [ -f "$s" ] || continue
  echo "=== $(basename "$s")"
  bash "$s" "$build" || status=1
done
strict=()
[ "${WQ_BENCH_STRICT:-0}" = 1 ] && strict=(--strict)
"$build/bench/wq_bench_report" table "$WQ_BENCH_RESULTS" "$build/bench.json" "${strict[@]}" || status=1
exit $status
