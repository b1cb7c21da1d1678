# The two commands a player or developer needs:
#   make run   installs what is missing, builds a release build and starts the game
#   make test  installs what is missing, builds, and runs every test headless (plain and sanitized)
.PHONY: run build test test-fast bench assets format deps install clean

BUILD := build
JOBS ?= $(shell nproc)

deps:
	@scripts/install-deps

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Release

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j$(JOBS)

run: build
	scripts/seed-user-data $(BUILD)
	./$(BUILD)/quillmaze

# Puts the shipped tours into the player's game folder where they are missing; never overwrites.
install: build
	scripts/seed-user-data $(BUILD)

test: deps
	scripts/run-tests

# The plain build's tests only, for a quick check while working.
test-fast: deps
	QM_TEST_SANITIZED=0 scripts/run-tests

bench: build
	scripts/run-bench $(BUILD)

assets: deps
	scripts/make-assets

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) build-asan build-fuzz build-tsan build-assets
