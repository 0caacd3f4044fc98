# The commands of daily work. Each installs what is missing, builds what it needs and can be run on a fresh machine.

PREFIX ?= /usr/local
TEST_PRESETS := dev asan tsan fortify mips
SOURCES = $(shell find src board catalog testing sim text command_line toml_file storage call audit ponctl front tests bench examples -name '*.cpp' -o -name '*.c' -o -name '*.h' | grep -v '^catalog/generated/')

.PHONY: help demo test bench mutation coverage fuzz generate format format-check install packages python-packages $(TEST_PRESETS:%=test-%)

help:
	@echo 'make demo      build everything, start a simulated OLT, bind and release ONUs on it'
	@echo 'make test      build and run every test: host, sanitizers, fortified, big-endian MIPS'
	@echo 'make test-dev  the same for one configuration: $(TEST_PRESETS)'
	@echo 'make bench     measure operations, exchanges, results and sizes'
	@echo 'make mutation  show that the tests notice changes in the library'
	@echo 'make coverage  count which lines the tests of the dev configuration run'
	@echo 'make fuzz      look for inputs that programs do not bear: TARGET=NAME, all by default; TIME=SECONDS for each, 60'
	@echo 'make generate  write the public header, the export map and the record lengths from the catalogue'
	@echo 'make format    lay out the sources with clang-format'
	@echo 'make install   install library, header, tool, simulator and pages below PREFIX ($(PREFIX))'

packages:
	@packaging/install-packages

python-packages: packages
	@packaging/install-packages python-packages.txt

demo: packages
	@echo 'Building the library, the simulator and the tool ...'
	@cmake --preset quick --log-level=WARNING >/dev/null
	@cmake --build --preset quick -- --quiet
	@examples/demo build/quick

test: python-packages
	@tests/run $(TEST_PRESETS)

$(TEST_PRESETS:%=test-%): test-%: python-packages
	@tests/run $*

bench: python-packages
	cmake --preset release --log-level=WARNING >/dev/null
	cmake --build --preset release -- --quiet
	@bench/run build/release

mutation: packages
	/usr/bin/python3 tests/mutation/run.py

coverage: python-packages
	@packaging/install-packages coverage-packages.txt
	/usr/bin/python3 -B tests/coverage/run.py

TARGET ?= all
TIME ?= 60
fuzz: packages
	@packaging/install-packages fuzz-packages.txt
	@tests/fuzz/run '$(TARGET)' '$(TIME)'

generate: packages
	/usr/bin/python3 catalog/generate.py

format: packages
	clang-format -i $(SOURCES)

format-check:
	@clang-format --dry-run -Werror $(SOURCES)

install: python-packages
	cmake --preset release --log-level=WARNING -DCMAKE_INSTALL_PREFIX=$(PREFIX)
	cmake --build --preset release -- --quiet
	cmake --install build/release
