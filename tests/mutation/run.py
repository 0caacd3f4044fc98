#!/usr/bin/env python3
"""Shows that the tests notice changes in the library: alters a copy of src/ in one place, builds it, runs the contract
and unit tests on it, and so on for every place and kind of change.

run.py               all mutants
run.py PART...       those of files whose path contains one of the parts ("frame", "admission/binding")
run.py --list        says what would be altered, and builds nothing

Prints a line a mutant and a summary. Exit status 0: every mutant was killed, or explained in explained.toml;
1: a mutant survived, or an explanation fits none; 2: the tests themselves could not be built or fail.
"""

import argparse
import collections
import concurrent.futures
import dataclasses
import itertools
import json
import os
import pathlib
import queue
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import time
import tomllib

import mutants

ROOT = pathlib.Path(__file__).resolve().parents[2]
PRESET = "asan"  # this preset also notices what a change does to memory
BUILD = ROOT / "build" / PRESET
EXPLAINED = pathlib.Path(__file__).with_name("explained.toml")
PROGRAMS = ["tests/contract/contract_test", "tests/unit/binding_test"]
# This program tests one file alone, and takes too long to run for the others.
PROGRAMS_OF = {"frame/onu_ids.cpp": ["tests/unit/onu_ids_test"]}
FRAME_TEST = "tests/unit/frame_test"
TIME_LIMIT = 240
# Many tests let the library crash. To name the functions of each crash takes longer than the tests.
UNNAMED = {"ASAN_OPTIONS": "symbolize=0", "UBSAN_OPTIONS": "symbolize=0"}


class SetUpError(Exception):
    """The tests could not be built, or they fail on the unchanged library."""


@dataclasses.dataclass(frozen=True)
class Verdict:
    mutant: mutants.Mutant
    outcome: str  # killed, survived, same code, or not compiled
    by: str = ""


class Compiler:
    """This class compiles and links in the same way as the build."""

    def __init__(self):
        entries = json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8"))
        self.commands = {}
        cache = (BUILD / "CMakeCache.txt").read_text(encoding="utf-8")
        self.name = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.+)$", cache, re.MULTILINE)[1]
        for entry in entries:
            command = shlex.split(entry["command"])
            output = command[command.index("-o") + 1]
            for program, place in [("library", "/bsp_pon.dir/"), ("frame_test", "/frame_test.dir/")]:
                if place in output:
                    self.commands[program, pathlib.Path(entry["file"])] = command

    def sources(self, program):
        """Returns the files of the library or of the frame's test, by their path below src/ or by their own path."""
        return [file for name, file in sorted(self.commands) if name == program]

    def compile(self, program, file, copy, output):
        """Compiles a file, and takes what is below src/ from the copy. Returns False when it does not compile."""
        command = [word for word in self.commands[program, file] if word not in ("-Werror", "-g")]
        for index, word in enumerate(command):
            if word == "-o":
                command[index + 1] = str(output)
            elif word.startswith("-I") and pathlib.Path(word[2:]) == ROOT / "src":
                command[index] = f"-I{copy}"
            elif word == str(file) and file.is_relative_to(ROOT / "src"):
                command[index] = str(copy / file.relative_to(ROOT / "src"))
        return run([*command, "-w"], cwd=copy).returncode == 0

    def link(self, words, output):
        done = run([self.name, "-fsanitize=address,undefined", *map(str, words), "-o", str(output)])
        if done.returncode:
            raise SetUpError(f"cannot link {output}:\n{done.stdout}")


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                          **options)


class Bench:
    """This class is the folder of one worker. It has a copy of src/, and objects and programs made of it."""

    def __init__(self, folder, compiler):
        self.folder, self.compiler = folder, compiler
        self.copy = folder / "src"
        shutil.copytree(ROOT / "src", self.copy)
        (folder / "mutated").mkdir()
        (folder / "library").mkdir()
        self.objects = {}
        for program in ("library", "frame_test"):
            for index, file in enumerate(compiler.sources(program)):
                output = folder / f"{program}-{index}.o"
                if not compiler.compile(program, file, self.copy, output):
                    raise SetUpError(f"{file} does not compile")
                self.objects[program, file] = output

    def try_out(self, mutant):
        """Returns the verdict on one mutant."""
        path = self.copy / mutant.file
        original = path.read_text(encoding="utf-8")
        path.write_text(mutant.text, encoding="utf-8")
        try:
            library = self.rebuild("library", mutant.file)
            if library is None:
                return Verdict(mutant, "not compiled")
            if same := self.unchanged("library", library):
                frame = self.rebuild("frame_test", mutant.file)
                same = frame is not None and self.unchanged("frame_test", frame)
            if same:
                return Verdict(mutant, "same code")
            by = self.failing_program(library, mutant.file) or self.failing_frame_test(mutant.file)
            return Verdict(mutant, "killed" if by else "survived", by)
        finally:
            path.write_text(original, encoding="utf-8")

    def rebuild(self, program, altered):
        """Returns the objects of a program after a change of a file, or None when it does not compile."""
        objects = dict(self.objects)
        for index, file in enumerate(self.compiler.sources(program)):
            if altered.endswith(".h") or file == ROOT / "src" / altered:
                objects[program, file] = self.folder / "mutated" / f"{program}-{index}.o"
                if not self.compiler.compile(program, file, self.copy, objects[program, file]):
                    return None
        return {file: output for (name, file), output in objects.items() if name == program}

    def unchanged(self, program, objects):
        return all(output == self.objects[program, file] or
                   output.read_bytes() == self.objects[program, file].read_bytes() for file, output in objects.items())

    def failing_program(self, objects, altered):
        """Runs the programs that load the library. Returns what failed first, or an empty text."""
        self.compiler.link(["-shared", "-Wl,-soname,libbsp_pon.so.0", *objects.values()],
                           self.folder / "library" / "libbsp_pon.so.0")
        for program in [*PROGRAMS, *PROGRAMS_OF.get(altered, [])]:
            if by := self.failing(BUILD / program, LD_LIBRARY_PATH=str(self.folder / "library")):
                return by
        return ""

    def failing_frame_test(self, altered):
        objects = self.rebuild("frame_test", altered)
        if objects is None:
            return "frame_test does not compile"
        program = self.folder / "frame_test"
        libraries = [BUILD / name for name in ("testing/librecording_board.a", "lib/libgtest_main.a", "lib/libgtest.a")]
        self.compiler.link([*objects.values(), *libraries], program)
        return self.failing(program)

    def failing(self, program, **environment):
        try:
            done = run([str(program), "--gtest_fail_fast", "--gtest_brief=1"], cwd=self.folder,
                       env={**os.environ, **UNNAMED, **environment}, timeout=TIME_LIMIT)
        except subprocess.TimeoutExpired:
            return f"{program.name}: time limit"
        if done.returncode == 0:
            return ""
        failed = re.search(r"^\[  FAILED  \] (\S+?),? ", done.stdout, re.MULTILINE)
        broken = re.search(r"AddressSanitizer: \S+|runtime error: .*", done.stdout)
        return f"{program.name}: {failed[1] if failed else broken[0] if broken else 'crash'}"


def build_tests():
    targets = map(os.path.basename, [*PROGRAMS, *itertools.chain(*PROGRAMS_OF.values()), FRAME_TEST])
    for command in (["cmake", "--preset", PRESET], ["cmake", "--build", "--preset", PRESET, "--target", *targets]):
        done = run(command, cwd=ROOT)
        if done.returncode:
            raise SetUpError(f"{shlex.join(command)} failed:\n{done.stdout}")


def check_bench(bench):
    """Checks that the unchanged library passes and that a library without operations fails. So what is built here is
    what is tested.
    """
    library = {file: output for (name, file), output in bench.objects.items() if name == "library"}
    if by := next(filter(None, (bench.failing_program(library, file) for file in PROGRAMS_OF)), "") or bench.failing_frame_test(""):
        raise SetUpError(f"the tests fail on the library as it is: {by}")
    if not bench.failing_program({}, ""):
        raise SetUpError("the tests pass without the library: they do not load the one built here")


def explanations():
    entries = tomllib.loads(EXPLAINED.read_text(encoding="utf-8")).get("survivor", [])
    return {(entry["file"], entry["line"]): entry["reason"] for entry in entries}


def try_all(selected, workers):
    """Yields the verdicts in the order of the mutants."""
    with tempfile.TemporaryDirectory(prefix="mutation-") as folder:
        compiler = Compiler()
        benches = queue.SimpleQueue()
        for index in range(workers):
            benches.put(Bench(pathlib.Path(folder) / str(index), compiler))
        bench = benches.get()
        check_bench(bench)
        benches.put(bench)

        def try_one(mutant):
            own = benches.get()
            try:
                return own.try_out(mutant)
            finally:
                benches.put(own)

        with concurrent.futures.ThreadPoolExecutor(workers) as pool:
            yield from pool.map(try_one, selected)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("parts", nargs="*", metavar="PART", help="part of a path below src/")
    parser.add_argument("--list", action="store_true", help="only say what would be altered")
    options = parser.parse_args()
    started = time.monotonic()
    selected = [mutant for mutant in mutants.mutants_of(ROOT / "src", ROOT / "include" / "bsp_pon.h")
                if not options.parts or any(part in mutant.file for part in options.parts)]
    if options.list or not selected:
        for mutant in selected:
            print(f"src/{mutant.file}:{mutant.line}: {mutant.kind}: {mutant.change}")
        return 0 if selected else 2
    reasons, unused, counts = explanations(), set(explanations()), collections.Counter()
    try:
        build_tests()
        for verdict in try_all(selected, os.cpu_count() or 1):
            mutant, outcome = verdict.mutant, verdict.outcome
            key = f"src/{mutant.file}", mutant.altered_line
            why = verdict.by
            if outcome == "survived":
                outcome, why = ("explained", reasons[key]) if key in reasons else (outcome, mutant.altered_line)
                unused.discard(key)
            counts[outcome] += 1
            print(f"{outcome:12} src/{mutant.file}:{mutant.line}: {mutant.kind}: {mutant.change}"
                  f"{f' ({why})' if why else ''}", flush=True)
    except SetUpError as error:
        print(f"run.py: {error}", file=sys.stderr)
        return 2
    stale = [] if options.parts else sorted(unused)
    for file, line in stale:
        print(f"explained.toml explains what did not survive: {file}: {line}")
    tested = counts["killed"] + counts["explained"] + counts["survived"]
    print(f"mutation: {tested} mutants: {counts['killed']} killed, {counts['explained']} explained, "
          f"{counts['survived']} survived (besides, {counts['same code']} made the same machine code and "
          f"{counts['not compiled']} did not compile); {time.monotonic() - started:.0f} s")
    return 1 if counts["survived"] or stale else 0


if __name__ == "__main__":
    sys.exit(main())
