# Two set-up commands: `make demo` and `make test`.
BUILD ?= build
JOBS ?= 2
# ccache speeds up rebuilds where it is installed; nothing needs it.
CCACHE := $(shell command -v ccache 2>/dev/null)
CMAKE_FLAGS := -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZEMOK_WERROR=ON $(if $(CCACHE),-DCMAKE_CXX_COMPILER_LAUNCHER=$(CCACHE))

.PHONY: all build zemok test demo bench clean

all: build

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)

build: $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

zemok: $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS) --target zemok

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

demo: zemok
	@rm -rf demo-output && mkdir -p demo-output
	cp data/zemok.ini data/zemok.hlp examples/demo.cmd examples/synthetic/synsphere.dat \
	   examples/synthetic/vardene.ans examples/synthetic/fixed.inp demo-output/
	cd demo-output && ../$(BUILD)/zemok /C=demo.cmd /UC=vardene.ans < /dev/null | tee demo-transcript.txt

bench: $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS) --target model_evaluation_bench
	$(BUILD)/model_evaluation_bench

clean:
	rm -rf $(BUILD) build-san demo-output
