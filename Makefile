# The commands of daily work. Each installs what is missing, builds what it needs and can be run on a fresh machine.

PREFIX ?= /usr/local
TEST_PRESETS := dev asan tsan mips
SOURCES = $(shell find src board catalog testing sim text command_line toml_file program_log serving storage call audit configuration ponctl front fleet tests bench examples -name '*.cpp' -o -name '*.c' -o -name '*.h' | grep -v '^catalog/generated/')

.PHONY: fleet-proof deb try-deb same-deb cross-deb image release-check board help demo console test bench soak mutation coverage fuzz docs pictures generate format format-check install packages test-packages docs-packages $(TEST_PRESETS:%=test-%)

help:
	@echo 'make demo      build everything, start a simulated OLT, bind and release ONUs on it'
	@echo 'make console   show the web console of a simulated campus, on 127.0.0.1, until it is interrupted'
	@echo 'make test      build and run every test: host, sanitizers, big-endian MIPS'
	@echo 'make test-dev  the same for one configuration: $(TEST_PRESETS)'
	@echo 'make bench     measure operations, exchanges, results and sizes'
	@echo 'make soak      let OLTs come and go under ponfront with ten walkers and scrapers: MINUTES=10'
	@echo 'make fleet-proof  roll a change out over OLTS=1000 while OLTs, broker, bridges and the command itself fail'
	@echo 'make mutation  show that the tests notice changes in the library'
	@echo 'make coverage  count which lines the tests of the dev configuration run'
	@echo 'make fuzz      look for inputs that programs do not bear: TARGET=NAME, all by default; TIME=SECONDS for each, 60'
	@echo 'make docs      build the documentation as a site in build/docs/html'
	@echo 'make pictures  take the pictures of the web console that the documentation has'
	@echo 'make generate  write the public header, the export map and the record lengths from the catalogue'
	@echo 'make format    lay out the sources with clang-format'
	@echo 'make board     build the library for a 32-bit big-endian MIPS board, as a tar file'
	@echo 'make deb       build Debian packages; make try-deb installs, tests, upgrades and purges them in a fresh Debian'
	@echo 'make same-deb  build them again, elsewhere, and compare their bytes'
	@echo 'make cross-deb build them for another processor: ARCH=NAME, arm64 by default'
	@echo 'make image     make the image of ponsim, or do its steps where there is no tool for images'
	@echo 'make release-check  do all that has to hold before a release, and print a table of it'
	@echo 'make install   install library, header, tool, simulator and pages below PREFIX ($(PREFIX))'

packages:
	@packaging/install-packages

test-packages: packages docs-packages
	@packaging/install-packages test-packages.txt

docs-packages: packages
	@packaging/install-packages docs-packages.txt

demo: packages
	@echo 'Building the library, the simulator and the tool ...'
	@cmake --preset quick --log-level=WARNING >/dev/null
	@cmake --build --preset quick -- --quiet
	@examples/demo build/quick

console: packages
	@echo 'Building the simulator and the front end ...'
	@cmake --preset quick --log-level=WARNING >/dev/null
	@cmake --build --preset quick --target ponsim ponfront -- --quiet
	@examples/console build/quick

test: test-packages
	@tests/run $(TEST_PRESETS)

$(TEST_PRESETS:%=test-%): test-%: test-packages
	@tests/run $*

bench: test-packages
	cmake --preset release --log-level=WARNING >/dev/null
	cmake --build --preset release -- --quiet
	@bench/run build/release

MINUTES ?= 10
soak: test-packages
	@cmake --preset release --log-level=WARNING >/dev/null
	@cmake --build --preset release --target ponsim ponfront -- --quiet
	/usr/bin/python3 -B tests/front/snmp/soak.py build/release/sim/ponsim build/release/front/ponfront $(MINUTES)

OLTS ?= 1000
fleet-proof: test-packages
	@cmake --preset release --log-level=WARNING >/dev/null
	@cmake --build --preset release --target ponsim ponbridge ponctl -- --quiet
	/usr/bin/python3 -B tests/fleet/proof.py build/release/sim/ponsim build/release/fleet/ponbridge \
		build/release/ponctl/ponctl --olts $(OLTS)

mutation: test-packages
	/usr/bin/python3 tests/mutation/run.py

coverage: test-packages
	@packaging/install-packages coverage-packages.txt
	/usr/bin/python3 -B tests/coverage/run.py

TARGET ?= all
TIME ?= 60
fuzz: test-packages
	@packaging/install-packages fuzz-packages.txt
	@tests/fuzz/run '$(TARGET)' '$(TIME)'

docs: docs-packages
	@cmake --preset quick --log-level=WARNING >/dev/null
	@cmake --build build/quick --target pages ponfront -- --quiet
	@/usr/bin/python3 -B docs/site/build.py --build build/quick build/docs
	@echo 'The site begins at build/docs/html/index.html'

pictures: test-packages
	@cmake --preset quick --log-level=WARNING >/dev/null
	@cmake --build build/quick --target ponsim ponctl ponfront -- --quiet
	@/usr/bin/python3 -B tests/console/pictures.py build/quick/sim/ponsim build/quick/ponctl/ponctl \
		build/quick/front/ponfront scenarios/campus.toml docs/pictures

generate: packages
	/usr/bin/python3 catalog/generate.py

format: packages
	clang-format -i $(SOURCES)

format-check:
	@clang-format --dry-run -Werror $(SOURCES)

install: packages
	cmake --preset install --log-level=WARNING -DCMAKE_INSTALL_PREFIX=$(PREFIX)
	cmake --build --preset install -- --quiet
	cmake --install build/install

board: test-packages
	@packaging/make-board build/board

deb: packages
	@packaging/install-packages deb-packages.txt
	@packaging/make-deb build/deb

# They take minutes, and only root may: by hand and before a release. Nothing of them stays.
try-deb same-deb: deb
	@packaging/$@ build/deb

ARCH ?= arm64
cross-deb: packages
	@packaging/install-packages deb-packages.txt
	@packaging/cross-deb $(ARCH) build/cross

image: deb
	@packaging/make-image build/deb

release-check: test-packages
	@packaging/install-packages deb-packages.txt
	@packaging/release-check
