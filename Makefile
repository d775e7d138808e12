# The front door. The work is done by CMake (presets in CMakePresets.json) and by the scripts in scripts/.

PREFIX ?= /usr/local
DESTDIR ?=
FUZZ_SECONDS ?= 60
JOBS ?= $(shell nproc)
export FUZZ_SECONDS JOBS DESTDIR

.PHONY: build demo test bench bench-instructions load fuzz docs install lint analyze coverage package clean help

build:
	@scripts/bootstrap build test
	cmake --preset release
	cmake --build --preset release -j $(JOBS) --target deliverables

demo: build
	scripts/demo

test:
	@scripts/bootstrap build test
	scripts/run-tests

bench:
	@scripts/bootstrap build bench
	cmake --preset bench
	cmake --build --preset bench -j $(JOBS) --target ifcore_bench ifcore_residentMemory
	scripts/bench $(BENCH_ARGS)

bench-instructions:
	@scripts/bootstrap build instructions
	cmake --preset instructions
	cmake --build --preset instructions -j $(JOBS) --target ifcore_instructionCounts
	scripts/bench-instructions $(BENCH_ARGS)

load:
	@scripts/bootstrap build bench
	cmake --preset bench
	cmake --build --preset bench -j $(JOBS) --target ifcore_load
	build/bench/benchmarks/ifcore_load $(LOAD_DIVISOR)

fuzz:
	@scripts/bootstrap build fuzz
	scripts/fuzz

docs:
	@scripts/bootstrap docs
	scripts/docs

# Compiles nothing by itself when `make` has been run before, so that only this step needs the rights of the prefix.
install: build
	cmake --install build/release --prefix "$(PREFIX)"
	if [ -z "$(DESTDIR)" ] && [ "$$(id -u)" = 0 ]; then ldconfig; fi

lint:
	@scripts/bootstrap build test lint
	scripts/lint

analyze:
	@scripts/bootstrap build lint
	scripts/analyze

coverage:
	@scripts/bootstrap build test coverage
	scripts/coverage

package:
	@scripts/bootstrap build package
	scripts/package

clean:
	rm -rf build

help:
	@echo 'make            compiles libraries and program, optimised, into build/release'
	@echo 'make demo       the same, then shows the interfaces of this machine: scripts/demo'
	@echo 'make test       every test under address and undefined behaviour sanitizers (build/asan), then the tests of the'
	@echo '                program, and of consumers of an installation, with the optimised build (build/release)'
	@echo 'make lint       formatting, words, warnings as errors with g++ and clang, exported and needed symbols, binary'
	@echo '                interface, static analysis with cppcheck'
	@echo 'make analyze    static analysis with cppcheck and clang-tidy'
	@echo 'make coverage   all tests with counted lines (build/coverage), then the line coverage of common/ifcore'
	@echo 'make bench      compiles and runs the benchmarks against other libraries (build/bench); BENCH_ARGS=--strict fails'
	@echo '                when a limit is not reached'
	@echo 'make bench-instructions'
	@echo '                counts the instructions of the important paths and compares them with those of before;'
	@echo '                BENCH_ARGS=--renew keeps the new ones'
	@echo 'make load       a table of a million interfaces, and ten million changes of each kind of table in flat memory;'
	@echo '                LOAD_DIVISOR=100 makes it a hundredth of that'
	@echo 'make fuzz       compiles the fuzz targets (build/fuzz) and runs each for FUZZ_SECONDS=$(FUZZ_SECONDS)'
	@echo 'make docs       reference of the public headers: build/docs/html/index.html'
	@echo 'make install    installs to PREFIX=$(PREFIX), below DESTDIR when that is set'
	@echo 'make package    Debian packages in build/package'
	@echo 'make clean      removes build/'
	@echo 'Each first installs the Debian packages it needs, or says which are missing: scripts/bootstrap'
