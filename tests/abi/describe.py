#!/usr/bin/env python3
"""Describes the library's binary interface by its header: functions, records, constants.

describe.py           prints the description
describe.py --write   updates tests/abi/libbsp_pon.abi, which a test compares with it
"""

import argparse
import pathlib
import sys
import tempfile

import abi

DESCRIPTION = abi.ROOT / "tests" / "abi" / "libbsp_pon.abi"
HEAD = """\
# The binary interface that users of the library were compiled against. A change here breaks them, except for what is
# added. When it is meant: tests/abi/describe.py --write
"""


def layouts():
    """Returns rows with each record's size, and with each member's offset and size, as the compiler lays them out."""
    lines = ['#include "bsp_pon.h"', "#include <stddef.h>", "#include <stdio.h>", "int main(void)", "{"]
    for name, members in sorted(abi.structs().items()):
        lines.append(f'    printf("record {name} %zu\\n", sizeof(struct {name}));')
        for member in members:
            lines.append(f'    printf("    {member} at %zu, %zu\\n", offsetof(struct {name}, {member}), '
                         f'sizeof((struct {name} *)0)->{member});')
    with tempfile.TemporaryDirectory() as folder:
        source, program = pathlib.Path(folder) / "layouts.c", pathlib.Path(folder) / "layouts"
        source.write_text("\n".join([*lines, "    return 0;", "}", ""]), encoding="utf-8")
        abi.run(["gcc", "-std=c99", "-Iinclude", source, "-o", program])
        return abi.run([program])


def describe():
    functions = [f"function {name} {types}" for name, types in sorted(abi.prototypes().items())]
    constants = [f"constant {name} {value}" for name, value in sorted(abi.constants().items())]
    return "\n".join([HEAD, *functions, "", layouts(), *constants, ""])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--write", action="store_true", help="update the committed description")
    if parser.parse_args().write:
        DESCRIPTION.write_text(describe(), encoding="utf-8")
    else:
        sys.stdout.write(describe())


if __name__ == "__main__":
    main()
