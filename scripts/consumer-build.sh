#!/usr/bin/env bash
# Builds the example consumer against an installed framework under PREFIX,
# with CMake's find_package and with pkg-config, and runs each program the way
# a user would: no LD_LIBRARY_PATH, no C++ standard but what the framework's
# CMake targets and pkg-config files ask for, and the folders named after
# PREFIX (the build tree, say) hidden while the programs run, so that nothing
# but the installed files can serve them. One program uses the widgets library
# alone and runs in German: the core library and the German catalogue must be
# found from where the libraries are.
# Usage: consumer-build.sh PREFIX [FOLDER_TO_HIDE...]
# Extra compiler and linker flags (a sanitizer build's) come from CONSUMER_FLAGS.
set -euo pipefail
prefix=$(cd "$1" && pwd)
shift
flags=${CONSUMER_FLAGS:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/bin" "$work/empty"
pcdir=$(cd "$prefix" && dirname "$(find . -path '*pkgconfig/WQGeneralCore.pc' | head -1)")
pcdir=${pcdir#./}
libdir=$(dirname "$pcdir")
unset LD_LIBRARY_PATH
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$work"
widgets=$([ -f "$prefix/$pcdir/WQGeneralWidgets.pc" ] && echo yes || echo no)
shared=$(compgen -G "$prefix/$libdir/libWQGeneralCore.so*" >/dev/null && echo yes || echo no)

# The folders to hide, covered by an empty one in a mount namespace of the
# programs' own: as root, or as a user where user namespaces are allowed.
hidden=()
for folder in "$@"; do
  [ -d "$folder" ] && hidden+=("$(cd "$folder" && pwd)")
done
namespace=()
if [ ${#hidden[@]} -gt 0 ]; then
  for try in "-m" "-r -m"; do
    # shellcheck disable=SC2086
    if unshare $try true 2>/dev/null; then read -ra namespace <<<"$try"; break; fi
  done
  [ ${#namespace[@]} -gt 0 ] \
    || echo "consumer: no mount namespace here, so ${hidden[*]} stay visible to the programs" >&2
fi
isolated() {
  if [ ${#namespace[@]} -gt 0 ]; then
    unshare "${namespace[@]}" sh -c 'empty=$1; shift; while [ "$1" != -- ]; do
        mount --bind "$empty" "$1" || exit 125; shift; done; shift; exec "$@"' \
      sh "$work/empty" "${hidden[@]}" -- "$@"
  else
    "$@"
  fi
}
# Runs a program, its output to $work/out; shows its errors when it fails.
run() { isolated "$@" >"$work/out" 2>"$work/stderr" || { cat "$work/out" "$work/stderr"; exit 1; }; }

cmake -S examples/consumer -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$flags" >/dev/null
cmake --build "$work/cmake" >/dev/null
run "$work/cmake/consumer"
[ "$widgets" = no ] || run "$work/cmake/consumer_widgets"

export PKG_CONFIG_PATH="$prefix/$pcdir"
rpath="-Wl,-rpath,$prefix/$libdir"
# shellcheck disable=SC2046,SC2086
g++ -fPIC $flags -o "$work/bin/pc_consumer" examples/consumer/main.cpp $(pkg-config --cflags --libs WQGeneralCore) "$rpath"
run "$work/bin/pc_consumer"
german=none
if [ "$widgets" = yes ]; then
  # The form is compiled by uic, as a plain makefile would do it.
  uic=$(qtpaths6 --query QT_HOST_LIBEXECS 2>/dev/null || echo /usr/lib/qt6/libexec)/uic
  "$uic" examples/consumer/AmountForm.ui -o "$work/ui_AmountForm.h"
  # shellcheck disable=SC2046,SC2086
  g++ -fPIC $flags -I"$work" -o "$work/bin/pc_consumer_widgets" examples/consumer/widgets_main.cpp \
    $(pkg-config --cflags --libs WQGeneralWidgets) "$rpath"
  run "$work/bin/pc_consumer_widgets"

  # Linked as needed, the program names only the widgets library: the core
  # library comes through the widgets library's own run path.
  # shellcheck disable=SC2046,SC2086
  g++ -fPIC $flags -o "$work/bin/pc_translated" examples/consumer/translated_main.cpp \
    -Wl,--as-needed $(pkg-config --cflags --libs WQGeneralWidgets) "$rpath"
  if [ "$shared" = yes ] && readelf -d "$work/bin/pc_translated" | grep -q 'NEEDED.*libWQGeneralCore'; then
    echo "consumer: the widgets-only program names the core library itself" >&2; exit 1
  fi
  if [ "$shared" = no ]; then
    # Static archives cannot know where they were installed: an application
    # ships the catalogues beside itself (bin/../share/WQGeneral/translations).
    mkdir -p "$work/share/WQGeneral"
    cp -r "$prefix/share/WQGeneral/translations" "$work/share/WQGeneral/"
  fi
  expected=$(python3 -c 'import sys, xml.etree.ElementTree as ET
for m in ET.parse(sys.argv[1]).iter("message"):
    if m.findtext("source") == "Show all warnings again": print(m.findtext("translation"))' translations/WQGeneral_de.ts)
  LC_ALL=de_DE.UTF-8 LANGUAGE=de run "$work/bin/pc_translated"
  german=$(cat "$work/out")
  [ "$german" = "$expected" ] \
    || { echo "consumer: the German program shows \"$german\", not \"$expected\"" >&2; exit 1; }
fi
echo "consumer: built with CMake and with pkg-config against $prefix and ran (widgets: $widgets," \
  "German: \"$german\"${hidden[*]:+, hidden: ${hidden[*]}})"
# The QML module, where the prefix has one: a QML application imports it.
module=$(cd "$prefix" && find . -path '*/qml/WQGeneral/qmldir' | head -1)
if [ -n "$module" ] && [ -x "$work/cmake/consumer_quick" ]; then
  QML_IMPORT_PATH="$prefix/$(dirname "$(dirname "$module")")" run "$work/cmake/consumer_quick"
  echo "consumer: a QML application imported WQGeneral from $prefix"
fi
