BUILD ?= build
PREFIX ?= /usr/local
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo
FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 60

.PHONY: all deps configure build test run bench clean install fuzz

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	@[ -f $(BUILD)/build.ninja ] || cmake -S . -B $(BUILD) -G Ninja $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD)

test: build
	scripts/test-all.sh $(BUILD)

run: build
	scripts/run.sh $(BUILD)

bench: build
	scripts/bench.sh $(BUILD)

clean:
	rm -rf $(BUILD)

install: build
	cmake --install $(BUILD) --prefix $(PREFIX)

# The parsers under libFuzzer, each for FUZZ_SECONDS, in a clang build of their own.
fuzz: deps
	@[ -f $(FUZZ_BUILD)/build.ninja ] || CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLON_FUZZ=ON
	FUZZ_SECONDS=$(FUZZ_SECONDS) cmake --build $(FUZZ_BUILD) --target fuzz
