"""These tests check that the public header can be included alone, in C99 and C++, and in any order with the board's
headers.
"""

import itertools
import pathlib
import tempfile
import tomllib
import unittest

import abi

STRICT = ["-pedantic", "-Wall", "-Wextra", "-Werror", "-Iinclude", "-Iboard/include"]
LANGUAGES = {"C99": ["gcc", "-xc", "-std=c99"], "C++20": ["g++", "-xc++", "-std=c++20"]}
BOARD = [f"board/{path.name}" for path in sorted((abi.ROOT / "board" / "include" / "board").glob("*.h"))]
CROSS = ["mips"] if abi.available("mips") else []


def compile_text(compiler, text):
    """Compiles a source text strictly, and keeps nothing."""
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "source"
        source.write_text(text, encoding="utf-8")
        abi.run([*compiler, *STRICT, "-fsyntax-only", source])


def including(headers):
    return "".join(f'#include "{header}"\n' for header in headers) + "extern int unused;\n"


class Header(unittest.TestCase):
    def test_compiles_alone(self):
        for language, compiler in LANGUAGES.items():
            with self.subTest(language):
                compile_text(compiler, including(["bsp_pon.h"]))

    def test_compiles_twice_in_a_row(self):
        for language, compiler in LANGUAGES.items():
            with self.subTest(language):
                compile_text(compiler, including(["bsp_pon.h", "bsp_pon.h"]))

    def test_compiles_with_each_board_header_in_either_order(self):
        self.assertTrue(BOARD)
        for language, compiler in LANGUAGES.items():
            for header in BOARD:
                for order in itertools.permutations(["bsp_pon.h", header]):
                    with self.subTest(language, order=order):
                        compile_text(compiler, including(order))

    def test_compiles_with_all_board_headers_in_either_order(self):
        for language, compiler in LANGUAGES.items():
            for order in (["bsp_pon.h", *BOARD], [*reversed(BOARD), "bsp_pon.h"]):
                with self.subTest(language, order=order):
                    compile_text(compiler, including(order))

    def test_records_have_the_layout_of_the_catalogue(self):
        lines = ['#include "bsp_pon.h"', "#include <stddef.h>"]
        records = tomllib.loads((abi.ROOT / "catalog" / "records.toml").read_text(encoding="utf-8"))["record"]
        for record in records:
            lines.append(f'_Static_assert(sizeof({record["name"]}) == {record["size"]}, "{record["name"]}");')
            for field in record["fields"]:
                place = f'{record["name"]}, {field["name"]}'
                lines.append(f'_Static_assert(offsetof({place}) == {field["offset"]}, "{place}");')
        for target in ["host", *CROSS]:
            with self.subTest(target):
                compile_text([abi.TARGETS[target] + "gcc", "-xc", "-std=c11"], "\n".join([*lines, ""]))


if __name__ == "__main__":
    unittest.main()
