"""This module is the command line: it writes what has changed, or prints what has changed."""

import argparse
import pathlib
import sys

from .catalogue import Catalogue
from .checkout import Checkout
from .reading.entry import CatalogueError
from .writing.export_map import exports, symbols
from .writing.header import header
from .writing.python import answers, native, onu, queries, raw, records, rows
from .writing.python import tables as python_tables
from .writing.record_length import record_length
from .writing.service_words import service_words
from .writing.tables import tables
from .writing.thunks import thunks
from .writing.view_rows import view_rows

# The committed files are in the tree, so that a board's build needs no Python, and for the packages. Every other build makes the rest.
COMMITTED = {
    "include/bsp_pon.h": header,
    "catalog/generated/record_length.h": record_length,
    "catalog/generated/libbsp_pon.map": exports,
    "debian/libbsp-pon0.symbols": symbols,
}
BUILT = {
    "service_words.h": service_words,
    "tables.cpp": tables,
    "thunks.cpp": thunks,
    "view_rows.h": view_rows,
}
# The Python bindings are built of these: what the compiler reads, and modules of the package.
PYTHON = {
    "native.cdef": native.cdef,
    "native.c": native.source,
    "bsp_pon/raw.py": raw.raw,
    "bsp_pon/records.py": records.records,
    "bsp_pon/rows.py": rows.rows,
    "bsp_pon/answers.py": answers.answers,
    "bsp_pon/_onu_methods.py": onu.onu,
    "bsp_pon/_queries.py": queries.queries,
    "bsp_pon/_tables.py": python_tables.tables,
}


def generate(checkout, check=False, build=None, python=None):
    """Writes what is stale. With `check` it writes nothing and only prints what is stale. It works on the checkout, or
    on the files of the folder `build` or `python` when there is one. Returns the exit status.
    """
    target, writers = (build, BUILT) if build else (python, PYTHON) if python else (checkout, COMMITTED)
    try:
        catalogue = Catalogue(checkout)
        outputs = {name: write(catalogue) for name, write in writers.items()}
    except CatalogueError as error:
        print(f"generate.py: {error}", file=sys.stderr)
        return 2
    stale = [name for name, text in outputs.items() if not is_current(target, name, text)]
    for name in stale:
        if check:
            print(f"generate.py: {name} is stale; run catalog/generate.py", file=sys.stderr)
            continue
        target.write(name, outputs[name])
        if target is checkout:
            print(f"generate.py: wrote {name}")
    return 1 if check and stale else 0


def is_current(checkout, name, text):
    try:
        return checkout.read(name) == text
    except FileNotFoundError:
        return False


def main(description):
    parser = argparse.ArgumentParser(description=description, formatter_class=argparse.RawDescriptionHelpFormatter)
    action = parser.add_mutually_exclusive_group()
    action.add_argument("--check", action="store_true", help="only say what is stale")
    action.add_argument("--build", metavar="DIR", type=pathlib.Path, help="write what a build compiles into a folder")
    action.add_argument("--python", metavar="DIR", type=pathlib.Path, help="write what the Python bindings are built of")
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[2])
    options = parser.parse_args()
    build, python = (folder and Checkout(folder) for folder in (options.build, options.python))
    return generate(Checkout(options.root), options.check, build, python)
