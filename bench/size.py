#!/usr/bin/python3
"""Prints the size in bytes of the library on the target: 32-bit big-endian MIPS, -Os. Run it from the top of the
checkout.
"""

import pathlib
import subprocess
import tempfile

TOOL = "mips-linux-gnu-"
BUILD = ["g++", "-std=c++20", "-shared", "-fPIC", "-fno-exceptions", "-fno-rtti", "-fvisibility=hidden", "-Os",
         "-Iinclude", "-Iboard/include", "-Isrc", "-nodefaultlibs", "-lc"]
BUDGET = 32 * 1024  # for all 237 operations


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def main():
    with tempfile.TemporaryDirectory() as folder:
        library = f"{folder}/libbsp_pon.so"
        sources = sorted(str(path) for path in pathlib.Path("src").rglob("*.cpp"))
        subprocess.run([TOOL + BUILD[0], *BUILD[1:], *sources, "-o", library], check=True)
        sections = {row.split()[0]: int(row.split()[1]) for row in output(TOOL + "size", "-A", library).splitlines()
                    if row.startswith(".")}
        rows = [row.split() for row in output(TOOL + "nm", "-S", "--size-sort", library).splitlines()]
    operations = {row[3]: int(row[1], 16) for row in rows if len(row) == 4 and row[2] == "T"}
    shared = sum(int(row[1], 16) for row in rows if len(row) == 4 and row[2] in "tW")
    for name, size in sorted(operations.items(), key=lambda item: -item[1]):
        print(f"{name:<40} {size:6}")
    total = sections[".text"] + sections[".rodata"]
    print(f"{'shared parts':<40} {shared:6}")
    print(f".text {sections['.text']} + .rodata {sections['.rodata']} = {total} bytes for {len(operations)} operations, "
          f"{total / len(operations):.0f} an operation; the budget is {BUDGET} for all 237, {BUDGET / 237:.0f} an operation")


if __name__ == "__main__":
    main()
