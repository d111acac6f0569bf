#!/usr/bin/env bash
# wq as a whole process against the openssl command on the same files, as a
# command-line user compares them: Base64 of 64 MiB both ways, and the
# classic envelope of a 10 MiB document both ways.
#
# Each figure is the least CPU time (user and system) of a few runs, the
# two tools' runs taking turns: on a shared machine wall time mostly
# measures the neighbours, and wq makes its output durable (fdatasync
# before the rename) where openssl does not, a wait for the disk that is no
# work of either tool. Wall times are shown beside. Each tool's start-up (wq --version, openssl version) is measured
# apart, so that what the command itself costs is visible too.
#
# The rows go into the benchmark table (wq_bench_report add) when
# WQ_BENCH_RESULTS names the results folder, as scripts/bench.sh sets it.
#   usage: bench/wq_vs_openssl.sh [BUILD_DIR]   (the folder holding tools/wq/wq)
set -euo pipefail
build=${1:-build-bench}
wq="$build/tools/wq/wq"
report="$build/bench/wq_bench_report"
[ -x "$wq" ] || { echo "no $wq: build the wq target first" >&2; exit 2; }
[ -x "$report" ] || { echo "no $report: build the wq_bench_report target first" >&2; exit 2; }
command -v openssl >/dev/null || { echo "openssl is not installed" >&2; exit 2; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
runs=${RUNS:-5}

head -c $((64 * 1024 * 1024)) /dev/urandom > "$work/data.bin"
openssl base64 -A -in "$work/data.bin" > "$work/data.b64"
# About 10 MiB of rows, as the benchmarks use.
awk 'BEGIN { printf "<ledger>"
             for (i = 0; i < 140000; i++) printf "<row id=\x27%d\x27><payee>Caf\xc3\xa9 &amp; Co</payee><amount>-12.50</amount></row>\n", i
             printf "</ledger>" }' > "$work/doc.xml"
printf 'correct horse\n' > "$work/pw"
key=$(openssl rand -hex 16); iv=$(openssl rand -hex 16)
"$wq" encrypt --classic --password-file "$work/pw" "$work/doc.xml" "$work/doc.enc" 2>/dev/null
openssl enc -aes-128-cbc -a -A -K "$key" -iv "$iv" -in "$work/doc.xml" -out "$work/doc.ossl"

# "<cpu ms> <wall ms> <peak KiB>" of each of two commands (given as
# "command... -- command..."), the best of $runs runs each (the most memory).
# The runs take turns, so that a machine whose speed drifts (a busy
# neighbour on the same core) weighs on both commands alike.
measure_both() {
  local first=() second=() side=1 a r c w k
  for a in "$@"; do
    if [ "$a" = "--" ]; then side=2; continue; fi
    if [ $side = 1 ]; then first+=("$a"); else second+=("$a"); fi
  done
  local best1="" best2=""
  for ((r = 0; r < runs; r++)); do
    read -r c w k < <("$report" time 1 "${first[@]}")
    best1=$(better "$best1" "$c" "$w" "$k")
    read -r c w k < <("$report" time 1 "${second[@]}")
    best2=$(better "$best2" "$c" "$w" "$k")
  done
  echo "$best1 $best2"
}
better() {   # the best so far ("" or "cpu wall peak") and one more run
  awk -v so="$1" -v c="$2" -v w="$3" -v k="$4" 'BEGIN {
    if (so == "") { print c, w, k; exit }
    split(so, b, " ")
    printf "%s %s %s\n", (c < b[1] ? c : b[1]), (w < b[2] ? w : b[2]), (k > b[3] ? k : b[3]) }'
}
read -r wq_start _ _ ossl_start _ _ < <(measure_both "$wq" --version -- openssl version)

row() {   # program's target row: name value unit bound limit detail
  printf '  %-44s %10s %2s %-8s %s\n' "$1" "$2$3" "$4" "$5$3" "$(awk -v v="$2" -v b="$4" -v l="$5" \
    'BEGIN { print ((b == ">=" ? v >= l : v <= l) ? "holds" : "MISSED") }')"
  if [ -n "${WQ_BENCH_RESULTS:-}" ]; then
    "$report" add "$WQ_BENCH_RESULTS" wq_vs_openssl "$1" "$2" "$3" "$4" "$5" "$6"
  fi
}

echo "wq start-up ${wq_start} ms CPU, openssl start-up ${ossl_start} ms CPU (best of $runs)"
compare() {   # name, wanted speed-up, memory cap in MiB (0: 3x the input), input file, wq command..., -- openssl command...
  local name=$1 want=$2 cap=$3 input=$4; shift 4
  local wc ww wk oc ow ok
  read -r wc ww wk oc ow ok < <(measure_both "$@")
  local limit=$cap
  [ "$cap" -eq 0 ] && limit=$(( 3 * $(stat -c %s "$input") / 1024 / 1024 ))
  local ratio detail
  ratio=$(awk -v w="$wc" -v o="$oc" 'BEGIN { printf "%.2f", (w > 0 ? o / w : 0) }')
  detail=$(awk -v wc="$wc" -v ws="$wq_start" -v ww="$ww" -v oc="$oc" -v os="$ossl_start" -v ow="$ow" \
    'BEGIN { printf "CPU: wq %.1f ms (start-up %.1f + work %.1f), openssl %.1f ms (start-up %.1f + work %.1f); wall %.0f vs %.0f ms",
             wc, ws, wc - ws, oc, os, oc - os, ww, ow }')
  row "$name: speed / openssl" "$ratio" "x" ">=" "$want" "$detail"
  row "$name: peak memory" "$((wk / 1024))" " MiB" "<=" "$limit" "openssl $((ok / 1024)) MiB"
  echo "    $detail"
}

# Whole-process Base64 is bound by reading and writing the files for both
# tools: no slower than openssl is the target.
compare "wq base64 encode 64 MiB" 1 64 "$work/data.bin" \
  "$wq" base64 encode "$work/data.bin" "$work/o1" -- openssl base64 -A -in "$work/data.bin" -out "$work/o2"
compare "wq base64 decode 64 MiB" 1 64 "$work/data.b64" \
  "$wq" base64 decode "$work/data.b64" "$work/o1" -- openssl base64 -d -A -in "$work/data.b64" -out "$work/o2"
compare "wq encrypt --classic 10 MiB" 1 0 "$work/doc.xml" \
  "$wq" encrypt --classic --password-file "$work/pw" "$work/doc.xml" "$work/o1" -- \
  openssl enc -aes-128-cbc -a -A -K "$key" -iv "$iv" -in "$work/doc.xml" -out "$work/o2"
compare "wq decrypt (classic) 10 MiB" 1 0 "$work/doc.enc" \
  "$wq" decrypt --password-file "$work/pw" "$work/doc.enc" "$work/o1" -- \
  openssl enc -d -aes-128-cbc -a -A -K "$key" -iv "$iv" -in "$work/doc.ossl" -out "$work/o2"
