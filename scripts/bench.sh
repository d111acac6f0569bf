#!/usr/bin/env bash
# Runs every benchmark program built in the given build folder, then gathers
# their results into <build>/bench.json and prints the table of targets.
# Each program writes <build>/bench-results/<program>.json; a script that
# measures something itself adds target rows there with
#   "$build/bench/wq_bench_report" add "$WQ_BENCH_RESULTS" <program> <target> <value> <unit> '>='|'<=' <limit> [detail]
# A target that does not hold is shown as missed in the table and in
# bench.json; the run still succeeds when everything was measured.
# WQ_BENCH_STRICT=1 makes a target that does not hold fail the run.
set -euo pipefail
build=${1:-build-bench}
report="$build/bench/wq_bench_report"
export WQ_BENCH_RESULTS="$build/bench-results"
rm -rf "$WQ_BENCH_RESULTS"
mkdir -p "$WQ_BENCH_RESULTS"
status=0
# A program that leaves no results behind still gets a row: its targets are
# then known to be missing rather than silently absent.
no_results() {   # program, why
  "$report" add "$WQ_BENCH_RESULTS" "$1" "its targets (no results file)" 0 "" ">=" 1 "$2"
}
# Programs only: CMake keeps folders (bench_*_autogen) beside them. Half a
# second per benchmark: at a fifth the cache hits still include warm-up.
for b in "$build"/bench/bench_*; do
  [ -f "$b" ] && [ -x "$b" ] || continue
  name=$(basename "$b")
  echo "=== $name"
  if ! "$b" --benchmark_min_time=0.5; then
    status=1
    [ -f "$WQ_BENCH_RESULTS/$name.json" ] || no_results "$name" "the program failed"
  fi
  [ -f "$WQ_BENCH_RESULTS/$name.json" ] || no_results "$name" "the program wrote no results"
done
# Scripts that compare whole processes (bench/*.sh), given the build folder.
for s in bench/*.sh; do
  [ -f "$s" ] || continue
  name=$(basename "$s" .sh)
  echo "=== $name"
  bash "$s" "$build" || { status=1; [ -f "$WQ_BENCH_RESULTS/$name.json" ] || no_results "$name" "the script failed"; }
done
strict=()
[ "${WQ_BENCH_STRICT:-0}" = 1 ] && strict=(--strict)
"$report" table "$WQ_BENCH_RESULTS" "$build/bench.json" "${strict[@]}" || status=1
exit $status
