# Tarvenix: every set-up step a fresh Debian machine needs, behind a few targets.
# `make demo` and `make test` install what they need themselves.

SHELL := /bin/bash
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

# Debian packages the build, the tests, the demo and the benchmarks need.
DEB_PACKAGES := cmake g++ make pkgconf \
	qt6-base-dev qt6-svg-dev qt6-multimedia-dev \
	libgtest-dev libgmock-dev libbenchmark-dev \
	xvfb xauth fonts-dejavu-core fonts-liberation time \
	python3-numpy python3-scipy python3-sympy

# What the build without Qt needs: no Qt packages at all.
NOGUI_PACKAGES := cmake g++ make pkgconf libgtest-dev libgmock-dev libbenchmark-dev

# What `make package` needs beyond the build: CPack's helpers (dpkg-shlibdeps
# for the dependencies) and the checkers of the menu entry, the metainfo and
# the man pages.
PACKAGE_PACKAGES := dpkg-dev file desktop-file-utils appstream man-db

# The Windows build: the MinGW-w64 cross compiler, Wine to run what it makes,
# and GoogleTest's sources to build for it.
WINDOWS_PACKAGES := cmake make g++-mingw-w64-x86-64 wine wine64 googletest

# The fuzz targets' compiler and its sanitizer and fuzzer runtimes.
FUZZ_PACKAGES := cmake make clang-14 libclang-rt-14-dev
# Seconds each fuzz target runs (`make fuzz FUZZ_TIME=600`).
FUZZ_TIME ?= 60
FUZZ_TARGETS := channel_selection data_history ipc_events ini_files numbers

SUDO := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

# $(call install_missing,packages): installs those of the Debian packages that are missing.
define install_missing
	@missing=$$(for p in $(1); do \
	    dpkg-query -W -f='$${Status}\n' "$$p" 2>/dev/null | grep -q '^install ok installed' || echo "$$p"; \
	  done); \
	if [ -n "$$missing" ]; then \
	  echo "Installing Debian packages:" $$missing; \
	  export DEBIAN_FRONTEND=noninteractive; \
	  $(SUDO) apt-get update -qq >/dev/null && \
	  $(SUDO) apt-get install -y -qq --no-install-recommends $$missing >/dev/null; \
	fi
endef

.PHONY: all deps build test nogui windows-test package package-test demo run asan bench fuzz mutants soak clean

all: build

deps:
	$(call install_missing,$(DEB_PACKAGES))

build: deps
	cmake --preset ci >/dev/null
	cmake --build --preset ci -j $(JOBS)

test: build
	ctest --preset ci

# The core and the batch tool built without Qt (build-nogui/), and their tests:
# the batch tool must not need Qt for anything but plots.
nogui:
	$(call install_missing,$(NOGUI_PACKAGES))
	cmake --preset ci-nogui >/dev/null
	cmake --build --preset ci-nogui -j $(JOBS)
	ctest --preset ci-nogui

# The Debian package build/tarvenix_<version>_<arch>.deb, from the build that
# `make build` (or `make test`) made; its texts are checked first.
package: build
	$(call install_missing,$(PACKAGE_PACKAGES))
	bash tools/package/check-texts.sh build
	rm -f build/tarvenix_*.deb
	cmake --build --preset ci --target package
	@ls build/tarvenix_*.deb

# The package installed on this machine, checked, and purged again (as root;
# CI's machine is disposable). Refuses where tarvenix is installed already.
package-test: package
	bash tools/package/install-test.sh

# The core, the batch tool and their tests built for 64-bit Windows
# (build-windows/, static .exe files) and run under Wine, headless, in a Wine
# folder of the build's own (build-windows/wine).
windows-test:
	$(call install_missing,$(WINDOWS_PACKAGES))
	cmake --preset windows >/dev/null
	cmake --build --preset windows -j $(JOBS)
	ctest --preset windows

demo: build
	@bash tools/demo.sh

run: build
	./build/tarvenix

asan: deps
	cmake --preset ci-sanitize >/dev/null
	cmake --build --preset ci-sanitize -j $(JOBS)
	ctest --preset ci-sanitize

# The main window's commands in random order for SOAK_SECONDS (600), checking
# the session's rules after every step; `make test` runs a short sequence.
SOAK_SECONDS ?= 600
soak: build
	TARVENIX_SOAK_SECONDS=$(SOAK_SECONDS) QT_QPA_PLATFORM=offscreen \
	  ./build/tests/gui_tests --gtest_filter='SessionSoakTest.*'

bench: build
	@bash tools/bench.sh

# Each fuzz target for FUZZ_TIME seconds under the address and undefined-behaviour
# sanitizers, after replaying its corpus.
fuzz:
	$(call install_missing,$(FUZZ_PACKAGES))
	cmake --preset fuzz >/dev/null
	cmake --build --preset fuzz -j $(JOBS)
	bash tools/fuzz.sh $(FUZZ_TIME) $(FUZZ_TARGETS)

# Plants each fault of tools/mutants/faults.txt alone into a build of its own
# (build-mutants/), rebuilds and runs the tests: every fault must make a test
# fail. A subset: `make mutants MUTANTS="dh-first-cycle wb-z95"`.
MUTANTS ?=
mutants: deps
	@command -v python3 >/dev/null || { echo "make mutants needs python3"; exit 1; }
	JOBS=$(JOBS) python3 tools/mutants/run.py $(MUTANTS)

clean:
	rm -rf build build-asan build-nogui build-windows build-fuzz build-mutants out
