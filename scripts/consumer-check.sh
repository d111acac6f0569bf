#!/usr/bin/env bash
# Installs a build into a scratch prefix (not the one it was configured for)
# and builds and runs the example consumer against it with the build tree and
# the configured prefix's WQGeneral data hidden (see consumer-build.sh).
set -euo pipefail
build=${1:-build}
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null
configured=$(sed -n 's/^CMAKE_INSTALL_PREFIX:PATH=//p' "$build/CMakeCache.txt")
bash scripts/consumer-build.sh "$prefix" "$build" "${configured:-/usr/local}/share/WQGeneral"
