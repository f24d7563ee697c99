# KORVEL: `make run` builds and opens the program on a demo data tree; `make test` builds and
# runs every test. Both install the Debian packages they need first.

BUILD_TYPE ?= RelWithDebInfo
JOBS ?= $(shell nproc)
SANITIZE ?= 0
FUZZ_SECONDS ?= 15
DEMO_DIR ?= $(CURDIR)/.demo
# Paths below the checkout hash alike in every clone, so a compiler cache serves them all.
export CCACHE_BASEDIR ?= $(CURDIR)

ifeq ($(SANITIZE),1)
BUILD_DIR ?= build-sanitize
CMAKE_FLAGS += -DKORVEL_SANITIZE=ON -DKORVEL_BENCH=OFF
BUILD_TYPE := Debug
else
BUILD_DIR ?= build
endif

.PHONY: all deps configure build test run bench fuzz format clean package

all: build

deps:
	@bash scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

test: build
	cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen \
	  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  ctest --output-on-failure -j $(JOBS) --timeout 300

# The Debian package: build/korvel_<version>_<arch>.deb.
package: build
	cd $(BUILD_DIR) && cpack -G DEB

run: build
	@bash scripts/run.sh "$(BUILD_DIR)" "$(DEMO_DIR)"

bench: build
	@bash scripts/bench.sh "$(BUILD_DIR)"

# libFuzzer targets, built with clang, each run for FUZZ_SECONDS.
fuzz: deps
	CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DKORVEL_FUZZ=ON -DKORVEL_TESTS=OFF -DKORVEL_BENCH=OFF
	cmake --build build-fuzz -j $(JOBS) --target fuzzers
	@bash scripts/fuzz.sh build-fuzz $(FUZZ_SECONDS)

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build build-sanitize build-fuzz
