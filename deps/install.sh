#!/usr/bin/env bash
# Installs the missing Debian packages of a list beside this script
# (debian-packages.txt unless another list is named).
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
list=${1:-debian-packages.txt}
mapfile -t wanted < <(grep -v -E '^\s*(#|$)' "$here/$list")
missing=()
for p in "${wanted[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
