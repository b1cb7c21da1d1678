# The two commands a player or developer needs:
#   make run   installs what is missing, builds a release build and starts the game
#   make test  installs what is missing, builds, and runs every test headless (plain and sanitized)
.PHONY: run build test test-fast bench serve assets format deps install package package-check clean

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

# Installs the game, its tools and the service under PREFIX (bin/, share/quillmaze/, the desktop
# entry, the icon and the manual pages). The game puts the shipped tours into a player's game
# folder on its first start.
PREFIX ?= /usr/local
install: build
	cmake --install $(BUILD) --prefix $(PREFIX)

# The Debian package (build/quillmaze_<version>_<arch>.deb), and a check that it installs, runs
# from any folder and removes cleanly (needs root; run it in a fresh machine).
package: build
	cd $(BUILD) && cpack -G DEB
package-check: package
	scripts/check-package $(BUILD)

test: deps
	scripts/run-tests

# The plain build's tests only, for a quick check while working.
test-fast: deps
	QM_TEST_SANITIZED=0 scripts/run-tests

bench: build
	scripts/run-bench $(BUILD)
	bench/startup/run $(BUILD)
	bench/menu-idle/run $(BUILD)

# The web service on 127.0.0.1:8080, its data under the user data folder (Ctrl+C stops it).
serve: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j$(JOBS) --target quillmaze-server
	scripts/serve $(BUILD)

assets: deps
	scripts/make-assets

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) build-asan build-fuzz build-tsan build-assets
