"""Counts which lines the tests of the dev configuration run.

Builds everything so that it counts, runs the tests, and prints a table of folders. Which lines of which file were not run
stands in build/coverage/lines.txt then. Tests of the library's binary interface are left out, because counting adds
symbols to it. What runs in a process that is killed is not counted.
"""

import json
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).parents[2]
BUILD = ROOT / "build/coverage"
FOLDERS = ("src", "board/host", "sim", "call", "ponctl")


def run(*command):
    return subprocess.run(command, cwd=ROOT, check=False).returncode


def build_and_test():
    for step in (("cmake", "--preset", "coverage", "--log-level=WARNING"),
                 ("cmake", "--build", "--preset", "coverage", "--", "--quiet")):
        if run(*step):
            sys.exit("the build failed")
    for counts in BUILD.rglob("*.gcda"):
        counts.unlink()
    return run("ctest", "--preset", "coverage") == 0


def read_counts():
    summary = BUILD / "summary.json"
    command = ["gcovr", "--root", ".", "--json-summary", str(summary), "--txt", str(BUILD / "lines.txt")]
    for folder in FOLDERS:
        command += ["--filter", folder + "/"]
    if run(*command, str(BUILD)):
        sys.exit("the counts could not be read")
    return json.loads(summary.read_text())["files"]


def table_of(files):
    rows = ["| folder | lines | run | share |", "|---|---|---|---|"]
    for folder in FOLDERS:
        own = [file for file in files if file["filename"].startswith(folder + "/")]
        lines = sum(file["line_total"] for file in own)
        covered = sum(file["line_covered"] for file in own)
        rows.append(f"| `{folder}/` | {lines:,} | {covered:,} | {100 * covered / max(lines, 1):.1f}% |")
    return "\n".join(rows)


def main():
    passed = build_and_test()
    print(table_of(read_counts()))
    print("Which lines were not run: build/coverage/lines.txt")
    if not passed:
        sys.exit("tests failed; what they did not reach is not counted")


if __name__ == "__main__":
    main()
