#!/usr/bin/python3
"""Counts the instructions of an operation with a stub IPC, beside the same operation in C: instructions.py
PATH/operation_cost
"""

import re
import subprocess
import sys

FEW, MANY = 1000, 11000


def instructions(program, case, side, count):
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", program, case, side, str(count)]
    output = subprocess.run(command, check=True, capture_output=True, text=True).stderr
    return int(re.search(r"Collected\s*:\s*(\d+)", output).group(1))


def per_call(program, case, side):
    """Returns the instructions of one call. The cost of the start-up is the same in both runs, so the difference does
    not contain it.
    """
    return (instructions(program, case, side, MANY) - instructions(program, case, side, FEW)) / (MANY - FEW)


def main(program):
    cases = subprocess.run([program, "--list"], check=True, capture_output=True, text=True).stdout.split()
    print(f"{'operation':<24} {'library':>9} {'C':>9} {'ratio':>6}   instructions a call")
    for case in cases:
        ours, theirs = per_call(program, case, "lib"), per_call(program, case, "c")
        print(f"{case:<24} {ours:9.1f} {theirs:9.1f} {ours / theirs:6.2f}")


if __name__ == "__main__":
    main(*sys.argv[1:])
