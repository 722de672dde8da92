# SPDX-License-Identifier: Apache-2.0
# Shortcuts: `make demo` and `make test` on a bare Debian 12. The rest is in CMake.
PREFIX ?= /usr/local
JOBS ?= $(shell nproc)

.PHONY: demo docs test test-asan test-tsan test-qt6 bench install check packages

test: packages
	cmake --preset dev
	cmake --build --preset dev -j $(JOBS)
	ctest --preset dev

# Everything again under the address and undefined-behaviour sanitizers, and what has threads under
# the thread sanitizer.
test-asan test-tsan: test-%: packages
	cmake --preset $*
	cmake --build --preset $* -j $(JOBS)
	ctest --preset $*

# Everything again with Qt 6.
test-qt6: packages
	tools/install-packages tools/packages-qt6.txt
	cmake --preset qt6
	cmake --build --preset qt6 -j $(JOBS)
	ctest --preset qt6

demo: packages
	cmake --preset release
	cmake --build --preset release -j $(JOBS)
	tools/demo build/release

bench: packages
	tools/install-packages tools/packages-bench.txt
	cmake --preset release -DOXA_BUILD_BENCH=ON
	cmake --build --preset release -j $(JOBS)
	tools/bench build/release

# build/release/docs/html; `make install` then installs it, too.
docs: packages
	tools/install-packages tools/packages-docs.txt
	cmake --preset release -DOXA_BUILD_DOCS=ON
	cmake --build --preset release --target docs

install: packages
	cmake --preset release
	cmake --build --preset release -j $(JOBS)
	cmake --install build/release --prefix $(PREFIX)

check:
	tools/check

packages:
	@tools/install-packages
