BUILD ?= build
PREFIX ?= /usr/local
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo

.PHONY: all deps configure build test run bench clean install

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
