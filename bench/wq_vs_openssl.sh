#!/usr/bin/env bash
# wq as a whole process against the openssl command on the same files, as a
# command-line user compares them: wall time (best of a few runs) and peak
# memory (/usr/bin/time) for Base64 of 64 MiB both ways, and the classic
# envelope of a 10 MiB document both ways, with each target's verdict.
#   usage: bench/wq_vs_openssl.sh [BUILD_DIR]   (the folder holding tools/wq/wq)
set -euo pipefail
build=${1:-build-bench}
wq="$build/tools/wq/wq"
[ -x "$wq" ] || { echo "no $wq: build the wq target first" >&2; exit 2; }
command -v openssl >/dev/null || { echo "openssl is not installed" >&2; exit 2; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
runs=${RUNS:-5}

head -c $((64 * 1024 * 1024)) /dev/urandom > "$work/data.bin"
openssl base64 -A -in "$work/data.bin" > "$work/data.b64"
{
  printf '<ledger>'
  i=0
  # About 10 MiB of rows, as the benchmarks use.
  awk 'BEGIN { for (i = 0; i < 140000; i++) printf "<row id=\x27%d\x27><payee>Caf\xc3\xa9 &amp; Co</payee><amount>-12.50</amount></row>\n", i }'
  printf '</ledger>'
} > "$work/doc.xml"
printf 'correct horse\n' > "$work/pw"
key=$(openssl rand -hex 16); iv=$(openssl rand -hex 16)
"$wq" encrypt --classic --password-file "$work/pw" "$work/doc.xml" "$work/doc.enc"
openssl enc -aes-128-cbc -a -A -K "$key" -iv "$iv" -in "$work/doc.xml" -out "$work/doc.ossl"

# best wall seconds and peak KiB of a command over $runs runs
measure() {
  local best=999999 peak=0
  for _ in $(seq "$runs"); do
    /usr/bin/time -q -f '%e %M' -o "$work/t" "$@" > /dev/null 2>&1 || { echo "failed: $*" >&2; exit 1; }
    read -r seconds kib < "$work/t"
    best=$(awk -v a="$best" -v b="$seconds" 'BEGIN { print (b < a ? b : a) }')
    [ "$kib" -gt "$peak" ] && peak=$kib
  done
  echo "$best $peak"
}

printf '%-34s %9s %9s %9s %9s %7s  %s\n' "what" "wq s" "openssl s" "wq MiB" "ossl MiB" "ratio" "target"
compare() {   # name, wanted speed-up, memory cap in MiB (0: 3x the input), input bytes, wq command..., -- openssl command...
  local name=$1 want=$2 cap=$3 input=$4; shift 4
  local wqcmd=() osslcmd=() side=wq
  for a in "$@"; do
    if [ "$a" = "--" ]; then side=ossl; continue; fi
    if [ $side = wq ]; then wqcmd+=("$a"); else osslcmd+=("$a"); fi
  done
  read -r ws wk < <(measure "${wqcmd[@]}")
  read -r os ok < <(measure "${osslcmd[@]}")
  local ratio limit verdict
  ratio=$(awk -v w="$ws" -v o="$os" 'BEGIN { printf "%.2f", (w > 0 ? o / w : 0) }')
  limit=$cap; [ "$cap" -eq 0 ] && limit=$(( 3 * input / 1024 / 1024 ))
  verdict=$(awk -v r="$ratio" -v want="$want" -v k="$wk" -v l="$limit" \
    'BEGIN { print ((r >= want && k / 1024 < l) ? "holds" : "MISSED") }')
  printf '%-34s %9s %9s %9d %9d %7s  %s (>= %sx openssl, < %d MiB)\n' "$name" "$ws" "$os" $((wk / 1024)) $((ok / 1024)) \
    "$ratio" "$verdict" "$want" "$limit"
}

size() { stat -c %s "$1"; }
compare "base64 encode 64 MiB" 2 64 "$(size "$work/data.bin")" \
  "$wq" base64 encode "$work/data.bin" "$work/o1" -- openssl base64 -A -in "$work/data.bin" -out "$work/o2"
compare "base64 decode 64 MiB" 2 64 "$(size "$work/data.b64")" \
  "$wq" base64 decode "$work/data.b64" "$work/o1" -- openssl base64 -d -A -in "$work/data.b64" -out "$work/o2"
compare "encrypt 10 MiB (classic)" 1 0 "$(size "$work/doc.xml")" \
  "$wq" encrypt --classic --password-file "$work/pw" "$work/doc.xml" "$work/o1" -- \
  openssl enc -aes-128-cbc -a -A -K "$key" -iv "$iv" -in "$work/doc.xml" -out "$work/o2"
compare "decrypt 10 MiB (classic)" 1 0 "$(size "$work/doc.enc")" \
  "$wq" decrypt --password-file "$work/pw" "$work/doc.enc" "$work/o1" -- \
  openssl enc -d -aes-128-cbc -a -A -K "$key" -iv "$iv" -in "$work/doc.ossl" -out "$work/o2"
