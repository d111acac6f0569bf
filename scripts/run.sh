#!/usr/bin/env bash
# make run: the showcase when it is built, else a short tour of the wq tool.
set -euo pipefail
build=${1:-build}
if cmake --build "$build" --target wq-showcase >/dev/null 2>&1 && [ -x "$build/showcase/wq-showcase" ]; then
  if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$build/showcase/wq-showcase"
  fi
  echo "No display: running the showcase's scripted tour offscreen."
  QT_QPA_PLATFORM=offscreen exec "$build/showcase/wq-showcase" --tour "$build/tour"
fi
cmake --build "$build" --target wq >/dev/null
wq="$build/tools/wq/wq"
demo() { printf '$ wq %s\n' "$*"; "$wq" "$@" || printf '(exit status %d)\n' $?; echo; }
demo date make 2026 2 30
demo date info 2026-11-22
demo date add 2024-01-31 0 1 0
demo date since 2026-11-22 2000-02-29 --units ymd
demo date format "%A, %B %e, %Y" 2026-11-22 --locale de_DE
demo date from-day 0
