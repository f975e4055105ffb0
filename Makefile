# The two everyday commands: `make run` and `make test`.
# Both install what is missing first, so a fresh Debian 12 machine needs only this file.

PRESET ?= debug
CTEST_ARGS ?=

# Builds go through ccache; paths are made relative so that two clones share
# one cache (CI builds in a fresh clone).
export CCACHE_BASEDIR := $(CURDIR)
export CCACHE_NOHASHDIR := true
export CCACHE_MAXSIZE ?= 8G

WORKSTATION := build/$(PRESET)/app/bravik-workstation

.PHONY: deps configure build run test test-asan bench clean

deps:
	@scripts/install-deps

configure: deps
	@cmake --preset $(PRESET) >/dev/null

build: configure
	@cmake --build --preset $(PRESET)

run: build
	@if [ -x "$(WORKSTATION)" ]; then \
	  exec "$(WORKSTATION)" $(ARGS); \
	else \
	  echo "The workstation is not built yet: $(WORKSTATION) does not exist."; \
	fi

test: deps
	@cmake --preset debug >/dev/null
	@cmake --build --preset debug
	@cd build/debug && QT_QPA_PLATFORM=offscreen ctest --output-on-failure --no-tests=error $(CTEST_ARGS)

test-asan: deps
	@cmake --preset asan >/dev/null
	@cmake --build --preset asan
	@cd build/asan && QT_QPA_PLATFORM=offscreen ctest --output-on-failure --no-tests=error $(CTEST_ARGS)

bench: deps
	@cmake --preset release >/dev/null
	@cmake --build --preset release
	@echo "Benchmarks are in build/release/bench/."

clean:
	rm -rf build
