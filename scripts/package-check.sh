#!/usr/bin/env bash
# Builds the Debian packages of a shared-library build, unpacks them into a
# scratch root with dpkg -x and builds the example consumer against them.
set -euo pipefail
build=${1:-build}
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
rm -rf "$build/packages"
(cd "$build" && cpack -G DEB >"$root.log" 2>&1) || { cat "$root.log"; rm -f "$root.log"; exit 1; }
rm -f "$root.log"
for deb in "$build"/packages/*.deb; do dpkg -x "$deb" "$root"; done
echo "packages: $(cd "$build/packages" && echo *.deb)"
# Debian's own checks: no error and no warning. The few tags that do not fit
# are overridden inside the packages (cmake/debian/*.lintian-overrides.in),
# each with its reason.
lintian --fail-on error,warning --tag-display-limit 0 "$build"/packages/*.deb >"$root.lintian" 2>&1 \
  || { cat "$root.lintian"; rm -f "$root.lintian"; echo "package-check: lintian found the above" >&2; exit 1; }
echo "lintian: no errors or warnings"
rm -f "$root.lintian"
# The Designer plugin, when the build made one, lands in Qt's plugin folder.
if [ -f "$build"/designer/plugins/designer/libWQGeneralDesignerPlugin.so ]; then
  find "$root" -path '*/qt6/plugins/designer/libWQGeneralDesignerPlugin.so' | grep -q . \
    || { echo "package-check: the Designer plugin is not in the packages"; exit 1; }
fi
# The tool finds its library beside it in the unpacked tree.
"$root/usr/bin/wq" money format 1 >/dev/null
# The build tree hidden: the unpacked files alone serve the consumer.
bash scripts/consumer-build.sh "$root/usr" "$build" /usr/share/WQGeneral
