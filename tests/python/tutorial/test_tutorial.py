"""The tutorial is what it says: each of its lines is run, and what it shows is compared."""

import doctest
import pathlib

PAGE = pathlib.Path(__file__).resolve().parents[3] / "docs/python.md"


def test_the_tutorial():
    done = doctest.testfile(str(PAGE), module_relative=False, optionflags=doctest.REPORT_NDIFF, encoding="utf-8")
    assert done.attempted > 30 and done.failed == 0
