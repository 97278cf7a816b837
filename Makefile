# The commands of the README. PRESET chooses the build: dev (default), asan, release.
PRESET ?= dev
BUILD := build/$(PRESET)

# The ARM architecture of build-arm and test-arm: armhf or arm64.
ARCH ?= armhf

.PHONY: all bootstrap configure demo test build-arm test-arm lint format bench clean

all: configure
	cmake --build --preset $(PRESET)

bootstrap:
	scripts/bootstrap

configure: bootstrap
	cmake --preset $(PRESET)

demo: configure
	cmake --build --preset $(PRESET) --target demo
	scripts/demo $(BUILD)

test: all
	ctest --preset $(PRESET)

build-arm: bootstrap
	scripts/bootstrap --arm
	scripts/sysroot $(ARCH)
	cmake --preset $(ARCH)
	cmake --build --preset $(ARCH)

test-arm:
	scripts/test-arm armhf arm64

format:
	scripts/format

lint: bootstrap
	scripts/lint

bench: bootstrap
	scripts/bench

clean:
	rm -rf build
