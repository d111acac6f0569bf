#!/usr/bin/env bash
# Installs the build into a scratch prefix and builds the example consumer
# against it with find_package(WQGeneral), then runs it.
set -euo pipefail
build=${1:-build}
prefix=$(mktemp -d)
consumer=$(mktemp -d)
trap 'rm -rf "$prefix" "$consumer"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null
cmake -S examples/consumer -B "$consumer" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$consumer" >/dev/null
"$consumer/consumer"
if [ -x "$consumer/consumer_widgets" ]; then "$consumer/consumer_widgets"; fi
