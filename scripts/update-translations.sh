#!/bin/bash
# Refreshes translations/*.ts from the sources: every literal passed to
# WQStrings::tr() and WQToolbarStrings::tr(), filed under its string table.
# Usage: update-translations.sh [LUPDATE [DIR]]; DIR (default translations/)
# holds WQGeneral.ts, the English template, and WQGeneral_<language>.ts.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
lupdate=${1:-/usr/lib/qt6/bin/lupdate}
dir=${2:-$root/translations}
cd "$root"
mapfile -t sources < <(find core widgets quick \( -name '*.cpp' -o -name '*.h' \) | LC_ALL=C sort)
mapfile -t catalogues < <(find "$dir" -maxdepth 1 -name 'WQGeneral_*.ts' | LC_ALL=C sort)
# No line numbers: the files change only when a text does.
"$lupdate" -silent -I core/include -I widgets/include -I quick/include \
  -tr-function-alias Q_DECLARE_TR_FUNCTIONS+=WQ_DECLARE_STRING_TABLE \
  -locations none -no-obsolete -source-language en \
  "${sources[@]}" -ts "$dir/WQGeneral.ts" "${catalogues[@]}"

# The showcase's own catalogues, beside its sources (only when refreshing the
# framework's own folder).
if [ "$dir" = "$root/translations" ]; then
  mapfile -t showcase_sources < <(find showcase \( -name '*.cpp' -o -name '*.h' \) | LC_ALL=C sort)
  mapfile -t showcase_catalogues < <(find showcase -maxdepth 1 -name 'wq-showcase_*.ts' | LC_ALL=C sort)
  if [ "${#showcase_catalogues[@]}" -gt 0 ]; then
    "$lupdate" -silent -locations none -no-obsolete -source-language en \
      "${showcase_sources[@]}" -ts "${showcase_catalogues[@]}"
  fi
fi
