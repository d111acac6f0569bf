# Short commands. Each installs the missing Debian packages first.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_BENCH?= build-bench
BUILD_FUZZ ?= build-fuzz
BUILD_COVERAGE ?= build-coverage
FUZZ_SECONDS ?= 30
JOBS       ?= $(shell nproc)
CMAKE_FLAGS ?=
# Each component's and suite's sources compiled as one translation unit:
# the headers are parsed once per target instead of once per file, which
# halves a build from scratch. UNITY=-DCMAKE_UNITY_BUILD=OFF builds file by
# file (quicker after a small change).
UNITY      ?= -DCMAKE_UNITY_BUILD=ON

.PHONY: all deps configure build run run-quick test abi-baseline lint test-asan coverage package translations bench fuzz docs clean

all: build

deps:
	@bash deps/install.sh

# The main build makes shared libraries (tests still link the static
# components); the sanitizer build keeps the static flavour, so both are tried.
configure: deps
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_SHARED_LIBS=ON \
	  -DCMAKE_INSTALL_PREFIX=/usr $(UNITY) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

# The showcase in a window when there is a display, otherwise its scripted
# tour offscreen (screenshots under build/tour/).
run: configure
	@bash scripts/run.sh $(BUILD)

# The Qt Quick showcase the same way (screenshots under build/tour-quick/).
run-quick: configure
	@bash scripts/run-quick.sh $(BUILD)

test: build
	@ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS) --timeout 600
	@# The packages are made by the install rules: the consumer built against
	@# them checks both (the sanitizer run builds it against the installed tree).
	@bash scripts/package-check.sh $(BUILD)
	@bash scripts/licence-check.sh
	@bash deps/install.sh debian-packages-docs.txt
	@bash scripts/docs-check.sh $(BUILD)/docs
	@bash scripts/abi-check.sh $(BUILD)

# Re-records abi/ from the shared libraries of the main build: only for
# additions to the public API, or with a new major version (soname).
abi-baseline: build
	@bash scripts/abi-check.sh --record $(BUILD)

# clang-tidy and clazy over core/, widgets/, quick/ and tools/ with the main build's
# compile commands; quiet and exit 0 when they find nothing.
lint: configure
	@bash deps/install.sh debian-packages-lint.txt
	@cmake $(BUILD) -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
	@JOBS=$(JOBS) bash scripts/lint.sh $(BUILD)

# Debian packages of the main build, under build/packages.
package: build
	@rm -rf $(BUILD)/packages && cd $(BUILD) && cpack -G DEB

# The same tests with AddressSanitizer and UndefinedBehaviorSanitizer, built
# at -O1 with line tables only: what the sanitizers' reports need, at about
# two thirds of the compile time of -O2 -g.
test-asan: deps
	@cmake -S . -B $(BUILD_ASAN) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DWQ_SANITIZE=ON \
	  "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -g1 -DNDEBUG" -DWQ_BUILD_SHOWCASE=OFF $(UNITY) $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD_ASAN) -j $(JOBS)
	@ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/scripts/lsan.supp \
	  ctest --test-dir $(BUILD_ASAN) --output-on-failure -j $(JOBS) --timeout 900
	@ASAN_OPTIONS=detect_leaks=1 LSAN_OPTIONS=suppressions=$(CURDIR)/scripts/lsan.supp \
	  CONSUMER_FLAGS="-fsanitize=address,undefined" bash scripts/consumer-check.sh $(BUILD_ASAN)

# Line and branch coverage of core and widgets per folder (gcc --coverage,
# gcovr), against tests/coverage-baseline.txt: fails when a folder falls by
# more than one point.
coverage: deps
	@bash deps/install.sh debian-packages-coverage.txt
	@bash scripts/coverage.sh $(BUILD_COVERAGE)

# Refreshes translations/*.ts from the sources; translate what is new in
# each WQGeneral_<language>.ts (the build compiles them into .qm files).
translations: deps
	@bash scripts/update-translations.sh

bench: deps
	@cmake -S . -B $(BUILD_BENCH) -G Ninja -DCMAKE_BUILD_TYPE=Release -DWQ_BUILD_BENCH=ON \
	  -DWQ_BUILD_TESTS=OFF $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD_BENCH) -j $(JOBS)
	@bash scripts/bench.sh $(BUILD_BENCH)

# Each parser under libFuzzer with AddressSanitizer, FUZZ_SECONDS apiece.
fuzz: deps
	@bash deps/install.sh debian-packages-fuzz.txt
	@cmake -S . -B $(BUILD_FUZZ) -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DWQ_SANITIZE=ON -DWQ_BUILD_FUZZ=ON -DWQ_BUILD_TESTS=OFF -DWQ_BUILD_WIDGETS=OFF -DWQ_BUILD_TOOLS=OFF \
	  -DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link $(UNITY) $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD_FUZZ) -j $(JOBS)
	@bash scripts/fuzz.sh $(BUILD_FUZZ) $(FUZZ_SECONDS)

# HTML reference of the public headers into build-docs/html; fails on any
# Doxygen warning (an undocumented public name among them).
BUILD_DOCS ?= build-docs
docs:
	@bash deps/install.sh debian-packages-docs.txt
	@bash scripts/docs-check.sh $(BUILD_DOCS)

clean:
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_BENCH) $(BUILD_FUZZ) $(BUILD_DOCS) $(BUILD_COVERAGE)
