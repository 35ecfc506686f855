# Front door. `make demo` converts a bundled sample; `make test` builds and runs every test.
BUILD ?= build
JOBS ?= 2
MAKEFLAGS += --no-print-directory
CMAKE_FLAGS ?=

.PHONY: all bootstrap configure build demo test asan clang windows bench fuzz valgrind format clean mutants

all: build

bootstrap:
	@./scripts/bootstrap

configure: bootstrap
	@cmake -S . -B $(BUILD) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

demo: build
	@ruby scripts/demo $(BUILD)

test: build
	@cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# The same tests built with AddressSanitizer and UndefinedBehaviorSanitizer.
asan:
	@$(MAKE) --no-print-directory test BUILD=build-asan CMAKE_FLAGS="-DQUILLON_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug"

# The whole build and test suite with clang and libc++ (the macOS toolchain's pair).
clang:
	@./scripts/bootstrap clang libcxx
	@$(MAKE) --no-print-directory test BUILD=build-clang CMAKE_FLAGS="-DCMAKE_TOOLCHAIN_FILE=cmake/clang-libcxx.cmake"

# Cross-builds for Windows with MinGW-w64, runs the C++ tests under Wine, and compares the
# Windows tool's output for every sample with the Linux build's, byte for byte.
windows:
	@./scripts/windows-check

bench: bootstrap
	@cmake -S . -B build-bench -DQUILLON_BUILD_BENCH=ON -DCMAKE_BUILD_TYPE=Release -DQUILLON_BUILD_TESTS=ON >/dev/null
	@cmake --build build-bench -j $(JOBS) --target benchmarks
	@./build-bench/bench/benchmarks
	@cmake --build build-bench -j $(JOBS) --target QuillonProbe
	@QUILLON_PROBE_DIR=build-bench/ext-test ruby bench/ruby_copy_bench.rb

format:
	@clang-format -i $$(git ls-files '*.cpp' '*.h')

clean:
	@rm -rf build build-asan build-bench build-fuzz build-clang build-windows build-mutants

# Runs every fuzz target for FUZZ_SECONDS (default 60) and fails on any finding.
fuzz:
	@./scripts/fuzz

# The Ruby tests under valgrind memcheck; fails only on errors that involve our code.
valgrind:
	@BUILD=build-valgrind ./scripts/valgrind-ruby

# Plants N seeded faults in src/ one at a time (in a mirror under build-mutants/) and prints
# which the tests kill; SEED defaults to a random one, printed. Not part of `make test`.
N ?= 20
SEED ?=
mutants: bootstrap
	@./scripts/mutants $(N) $(SEED)
