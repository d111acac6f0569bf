#!/usr/bin/env bash
# Builds the example consumer against an installed framework under PREFIX,
# with CMake's find_package and with pkg-config, and runs each program.
# Extra compiler and linker flags (a sanitizer build's) come from CONSUMER_FLAGS.
set -euo pipefail
prefix=$1
flags=${CONSUMER_FLAGS:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
libdir=$(cd "$prefix" && dirname "$(find . -path '*pkgconfig/WQGeneralCore.pc' | head -1)")
export LD_LIBRARY_PATH="$prefix/$(dirname "$libdir")${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}"
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$work"
run() { "$1" >/dev/null 2>"$work/stderr" || { cat "$work/stderr"; exit 1; }; }
widgets=$([ -f "$prefix/$libdir/WQGeneralWidgets.pc" ] && echo yes || echo no)

cmake -S examples/consumer -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$flags" >/dev/null
cmake --build "$work/cmake" >/dev/null
run "$work/cmake/consumer"
[ "$widgets" = no ] || run "$work/cmake/consumer_widgets"

export PKG_CONFIG_PATH="$prefix/$libdir"
# shellcheck disable=SC2046,SC2086
g++ -std=c++20 -fPIC $flags -o "$work/pc_consumer" examples/consumer/main.cpp $(pkg-config --cflags --libs WQGeneralCore)
run "$work/pc_consumer"
if [ "$widgets" = yes ]; then
  # The form is compiled by uic, as a plain makefile would do it.
  uic=$(qtpaths6 --query QT_HOST_LIBEXECS 2>/dev/null || echo /usr/lib/qt6/libexec)/uic
  "$uic" examples/consumer/AmountForm.ui -o "$work/ui_AmountForm.h"
  # shellcheck disable=SC2046,SC2086
  g++ -std=c++20 -fPIC $flags -I"$work" -o "$work/pc_consumer_widgets" examples/consumer/widgets_main.cpp \
    $(pkg-config --cflags --libs WQGeneralWidgets)
  run "$work/pc_consumer_widgets"
fi
echo "consumer: built with CMake and with pkg-config against $prefix and ran (widgets: $widgets)"
# The QML module, where the prefix has one: a QML application imports it.
module=$(cd "$prefix" && find . -path '*/qml/WQGeneral/qmldir' | head -1)
if [ -n "$module" ] && [ -x "$work/cmake/consumer_quick" ]; then
  QML_IMPORT_PATH="$prefix/$(dirname "$(dirname "$module")")" run "$work/cmake/consumer_quick"
  echo "consumer: a QML application imported WQGeneral from $prefix"
fi
