"""The command line: writes what has changed, or says what has."""

import argparse
import pathlib
import sys

from .catalogue import Catalogue
from .checkout import Checkout
from .reading.entry import CatalogueError
from .writing.export_map import exports
from .writing.header import header
from .writing.record_length import record_length
from .writing.service_words import service_words
from .writing.tables import tables
from .writing.thunks import thunks

OUTPUTS = {
    "include/bsp_pon.h": header,
    "catalog/generated/service_words.h": service_words,
    "catalog/generated/record_length.h": record_length,
    "catalog/generated/libbsp_pon.map": exports,
    "catalog/generated/tables.cpp": tables,
    "catalog/generated/thunks.cpp": thunks,
}


def generate(checkout, check):
    """Writes what is stale, or only says what is, with `check`. Returns the exit status."""
    try:
        catalogue = Catalogue(checkout)
        outputs = {name: write(catalogue) for name, write in OUTPUTS.items()}
    except CatalogueError as error:
        print(f"generate.py: {error}", file=sys.stderr)
        return 2
    stale = [name for name, text in outputs.items() if not is_current(checkout, name, text)]
    for name in stale:
        if check:
            print(f"generate.py: {name} is stale; run catalog/generate.py", file=sys.stderr)
        else:
            checkout.write(name, outputs[name])
            print(f"generate.py: wrote {name}")
    return 1 if check and stale else 0


def is_current(checkout, name, text):
    try:
        return checkout.read(name) == text
    except FileNotFoundError:
        return False


def main(description):
    parser = argparse.ArgumentParser(description=description, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true", help="only say what is stale")
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[2])
    options = parser.parse_args()
    return generate(Checkout(options.root), options.check)
