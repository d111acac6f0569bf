#!/usr/bin/env bash
# Installs the missing Debian packages of a list beside this script
# (debian-packages.txt unless another list is named). A line "a | b" takes
# the first of the alternatives that the archive has (one installed is enough).
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
list=${1:-debian-packages.txt}
mapfile -t wanted < <(grep -v -E '^\s*(#|$)' "$here/$list")
installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }
missing=()
for line in "${wanted[@]}"; do
  have=
  for p in ${line//|/ }; do
    installed "$p" && have=1 && break
  done
  [ -n "$have" ] || missing+=("$line")
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
chosen=()
for line in "${missing[@]}"; do
  read -ra alternatives <<<"${line//|/ }"
  choice=
  for p in "${alternatives[@]}"; do
    policy=$(apt-cache policy "$p" 2>/dev/null)
    if [[ $policy =~ Candidate:\ [^\(] ]]; then choice=$p; break; fi
  done
  chosen+=("${choice:-${alternatives[0]}}")
done
echo "Installing: ${chosen[*]}"
# A throwaway machine (CI sets WQ_APT_UNSAFE_IO) need not wait for dpkg to
# sync every unpacked file to disk (a fifth of a bare machine's install).
options=()
[ -n "${WQ_APT_UNSAFE_IO:-}" ] && options=(-o Dpkg::Options::=--force-unsafe-io)
$sudo apt-get install -y -qq --no-install-recommends "${options[@]}" "${chosen[@]}"
