#!/usr/bin/env python3
"""Writes the public header, the export map and the tables from the catalogue's TOML files.

generate.py            writes what has changed
generate.py --check    writes nothing; exit status 1 and a line a file where something is stale
generate.py --root D   works on another checkout (for tests)

Wrong input is refused with the file, the entry and the reason, and nothing is written.
"""

import sys

from generator.program import main

if __name__ == "__main__":
    sys.exit(main(__doc__))
