#!/usr/bin/env bash
# Builds the tests with gcc's --coverage in their own folder, runs them and
# prints line and branch coverage of core/ and widgets/ per subsystem folder,
# beside the recorded figures in tests/coverage-baseline.txt. Fails when a
# folder falls by more than one point; --record writes the new figures there.
#   scripts/coverage.sh [build-folder] [--record]
set -euo pipefail
cd "$(dirname "$0")/.."
build=build-coverage
record=()
for arg in "$@"; do
  case $arg in
    --record) record=(--record) ;;
    *) build=$arg ;;
  esac
done

# Static components (as the tests link them), no optimisation so that lines
# map one to one, but Qt's release headers (a debug build's assertions would
# stop tests the real build passes); the benchmarks and fuzz targets are not tests.
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O0 -g -DNDEBUG" \
  -DBUILD_SHARED_LIBS=OFF -DCMAKE_CXX_FLAGS=--coverage -DCMAKE_EXE_LINKER_FLAGS=--coverage -DCMAKE_SHARED_LINKER_FLAGS=--coverage \
  -DCMAKE_MODULE_LINKER_FLAGS=--coverage -DWQ_BUILD_BENCH=OFF -DWQ_BUILD_FUZZ=OFF -DWQ_COVERAGE=ON \
  ${CMAKE_FLAGS:-} >/dev/null
cmake --build "$build" -j "${JOBS:-$(nproc)}"

# Counters of an earlier run would add up with this one's.
find "$build" -name '*.gcda' -delete
# A failing test still counts what it ran; the report says it failed.
status=0
ctest --test-dir "$build" -j "${JOBS:-$(nproc)}" --timeout 900 --output-on-failure >"$build/ctest.log" 2>&1 || status=$?
tail -n 3 "$build/ctest.log"

gcovr --root . --object-directory "$build" --filter 'core/' --filter 'widgets/' \
  --exclude-throw-branches --exclude-unreachable-branches --gcov-ignore-parse-errors -j "${JOBS:-$(nproc)}" \
  --json-summary "$build/coverage.json" >/dev/null
python3 scripts/coverage-summary.py "$build/coverage.json" tests/coverage-baseline.txt "${record[@]}"
if [ "$status" -ne 0 ]; then
  echo "some tests failed (see $build/ctest.log); their coverage is counted as far as they ran"
fi
