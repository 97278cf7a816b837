# The commands of the README. PRESET chooses the build: dev (default), asan, release.
PRESET ?= dev
BUILD := build/$(PRESET)

.PHONY: all bootstrap configure demo test lint format bench soak clean

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

soak: all
	scripts/soak $(BUILD)

format:
	scripts/format

lint: bootstrap
	scripts/lint

bench: bootstrap
	scripts/bench

clean:
	rm -rf build
