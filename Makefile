# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# One target for each thing that a person or CI does here; CONTRIBUTING.md explains them. Each target configures its
# build folder with all that it needs. PRESET selects the build: dev (default), asan or release.
PRESET ?= dev
BUILD := build/$(PRESET)

# The ARM architecture of build-arm and test-arm: armhf or arm64.
ARCH ?= armhf

.PHONY: all bootstrap configure demo test build-arm test-arm test-packages lint format bench instructions soak tsan \
        release-check clean

all: configure
	cmake --build --preset $(PRESET)

bootstrap:
	scripts/bootstrap

configure: bootstrap
	cmake --preset $(PRESET)

demo: configure
	cmake --build --preset $(PRESET) --target demo
	scripts/demo $(BUILD)

# The developer build's tests, then what an optimised build may cost, and a few tests for 32-bit ARM under emulation;
# INSTRUCTIONS=no and ARM=no leave those out.
INSTRUCTIONS ?= $(if $(filter dev,$(PRESET)),yes,no)
ARM ?= $(if $(filter dev,$(PRESET)),yes,no)

test: all
	ctest --preset $(PRESET)
ifeq ($(INSTRUCTIONS),yes)
	$(MAKE) instructions
endif
ifeq ($(ARM),yes)
	scripts/test-arm --ci armhf
endif

build-arm: bootstrap
	scripts/bootstrap --arm
	scripts/sysroot $(ARCH)
	cmake --preset $(ARCH)
	cmake --build --preset $(ARCH)

test-arm:
	scripts/test-arm armhf arm64

# As root: makes the Debian packages, installs them into a clean root and records and reports there.
test-packages: bootstrap
	scripts/bootstrap --arm
	cmake --preset release
	cmake --build --preset release --target demo pages
	scripts/test-packages build/release

soak: all
	scripts/soak $(BUILD)

# Threads under ThreadSanitizer: builds no more than what has several.
tsan: bootstrap
	cmake --preset tsan
	cmake --build --preset tsan --target tst_threads tst_qtuicoverageextension
	ctest --preset tsan -R '^tst_(threads|qtuicoverageextension)$$'

format:
	scripts/format

lint: bootstrap
	scripts/lint

bench: bootstrap
	scripts/bench

# Fails when something that happens often takes more instructions than it may.
instructions: bootstrap
	cmake --preset release -DUICOV_BUILD_BENCHMARKS=ON
	cmake --build --preset release --target instructions
	ctest --preset release --no-tests=error -R '^instructions$$'

# What can be checked by a program before a release; RELEASING.md has the rest.
release-check: bootstrap
	scripts/release --dry-run

clean:
	rm -rf build
