#!/usr/bin/env python3
"""Builds the documentation's site: pages that are written by hand, and the reference that follows from the catalogue.

    build.py --build FOLDER OUTPUT

FOLDER is a build with the pages of the manual and ponfront. The site is in OUTPUT/html. Every warning is an error, and
so is a link that leads nowhere.
"""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "catalog"))

# pylint: disable=wrong-import-position
from check import complaints
from generator.catalogue import Catalogue
from generator.checkout import Checkout
from look import write_look
from manual import write_manual
from pages import LinkError, Pages
from reference.reference import write_reference

WRITTEN_BY_HAND = ["sim/*.[1-8]", "front/*.[1-8]", "fleet/*.[1-8]"]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", metavar="FOLDER", type=pathlib.Path, required=True)
    parser.add_argument("output", metavar="OUTPUT", type=pathlib.Path)
    options = parser.parse_args()
    source, look, site = (options.output / name for name in ("source", "look", "html"))
    for folder in (source, look, site):
        shutil.rmtree(folder, ignore_errors=True)
    pages = Pages(ROOT, source)
    try:
        pages.gather()
        pages.check("README.md")
    except LinkError as error:
        print(f"build.py: {error}", file=sys.stderr)
        return 1
    manual = [*(options.build / "ponctl/pages/man").rglob("*.[1-8]")]
    manual += [page for pattern in WRITTEN_BY_HAND for page in ROOT.glob(pattern)]
    write_manual(source, manual)
    write_reference(source, ROOT, Catalogue(Checkout(ROOT)), options.build / "front/ponfront")
    pages.write_front_page(ROOT / "docs/site/groups.toml")
    write_look(look)
    # One process: the index of the search depends on which of several ends first.
    sphinx = [sys.executable, "-m", "sphinx", "-q", "-W", "--keep-going", "-n", "-b", "html", "-c",
              str(ROOT / "docs/site"), "-D", f"html_static_path=static,{look.resolve()}", "-d", str(options.output / "doctrees"), str(source), str(site)]
    if subprocess.run(sphinx, check=False).returncode != 0:
        return 1
    # The theme's script names its sources from where the site is built, which differs from folder to folder.
    script = site / "_static/scripts/furo.js"
    script.write_text(re.sub(r"(\.\./)+usr/", "/usr/", script.read_text(encoding="utf-8")), encoding="utf-8")
    wrong = complaints(site)
    for line in wrong:
        print(f"build.py: {line}", file=sys.stderr)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
