#!/usr/bin/env bash
# make run-quick: the Qt Quick showcase in a window when there is a display,
# otherwise its scripted tour offscreen (screenshots under build/tour-quick/).
set -euo pipefail
build=${1:-build}
if ! cmake --build "$build" --target wq-showcase-quick >/dev/null 2>&1; then
  echo "The Qt Quick showcase is not built (Qt Quick's development files missing?); see the README." >&2
  exit 1
fi
app="$build/showcase-quick/wq-showcase-quick"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$app"
fi
echo "No display: running the Qt Quick showcase's scripted tour offscreen."
QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software exec "$app" --tour "$build/tour-quick"
