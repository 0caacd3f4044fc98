#!/usr/bin/env python3
"""Writes what follows from the catalogue's TOML files.

generate.py             writes what has changed of the public header, the export map and the record lengths
generate.py --check     writes nothing; exit status 1 and a line a file where something is stale
generate.py --build D   writes what has changed of the tables and what else a build compiles into the folder D
generate.py --python D  writes what has changed of what the Python bindings are built of into the folder D
generate.py --root D    works on another checkout (for tests)

Wrong input is refused with the file, the entry and the reason, and nothing is written.
"""

import sys

from generator.program import main

if __name__ == "__main__":
    sys.exit(main(__doc__))
