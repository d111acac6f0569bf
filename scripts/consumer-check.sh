#!/usr/bin/env bash
# Installs a build into a scratch prefix and builds the example consumer
# against it (see consumer-build.sh).
set -euo pipefail
build=${1:-build}
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null
bash scripts/consumer-build.sh "$prefix"
