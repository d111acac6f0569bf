#!/usr/bin/env bash
# Every file of the repository carries its copyright and licence (the
# BSD 3-Clause licence through .reuse/dep5): `reuse lint`, quiet when it holds.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v reuse >/dev/null || { echo "reuse is not installed (make deps installs it)" >&2; exit 1; }
out=$(reuse lint 2>&1) || { echo "$out" >&2; echo "licence: reuse lint failed" >&2; exit 1; }
echo "licence: every file is BSD-3-Clause ($(grep -o 'license information: [0-9]* / [0-9]*' <<<"$out" | cut -d' ' -f3-) files)"
