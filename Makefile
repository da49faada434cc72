# Tarvenix: every set-up step a fresh Debian machine needs, behind a few targets.
# `make demo` and `make test` install what they need themselves.

SHELL := /bin/bash
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

# Debian packages the build, the tests, the demo and the benchmarks need.
DEB_PACKAGES := cmake g++ make pkgconf \
	qt6-base-dev qt6-svg-dev qt6-multimedia-dev \
	libgtest-dev libgmock-dev libbenchmark-dev \
	xvfb xauth fonts-dejavu-core fonts-liberation time

SUDO := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

.PHONY: all deps build test demo run asan bench clean

all: build

deps:
	@missing=$$(for p in $(DEB_PACKAGES); do \
	    dpkg-query -W -f='$${Status}\n' "$$p" 2>/dev/null | grep -q '^install ok installed' || echo "$$p"; \
	  done); \
	if [ -n "$$missing" ]; then \
	  echo "Installing Debian packages:" $$missing; \
	  export DEBIAN_FRONTEND=noninteractive; \
	  $(SUDO) apt-get update -qq >/dev/null && \
	  $(SUDO) apt-get install -y -qq --no-install-recommends $$missing >/dev/null; \
	fi

build: deps
	cmake --preset ci >/dev/null
	cmake --build --preset ci -j $(JOBS)

test: build
	ctest --preset ci

demo: build
	@bash tools/demo.sh

run: build
	./build/tarvenix

asan: deps
	cmake --preset ci-sanitize >/dev/null
	cmake --build --preset ci-sanitize -j $(JOBS)
	ctest --preset ci-sanitize

bench: build
	@bash tools/bench.sh

clean:
	rm -rf build build-asan out
