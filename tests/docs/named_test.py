"""Checks that what pages name is there: commands with their options, targets of make, functions, files, paths of REST, and
keys of scenarios.

    named_test.py PONCTL PONSIM PONFRONT
"""

import functools
import json
import pathlib
import re
import shlex
import subprocess
import sys
import tomllib
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "docs/site"))

# pylint: disable=wrong-import-position
from reference.scenarios import KEY, TABLE
from reference.told import told_by

PAGES = [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]
INLINE = re.compile(r"(?<!`)`([^`\n]+)`(?!`)")
BLOCK = re.compile(r"^```(\w*)\n(.*?)^```$|((?:^    [^\n]*\n|^\n(?=    ))+)", re.MULTILINE | re.DOTALL)
NAME = re.compile(r"\b(?:bsp_[a-z0-9_]+|board_ipc_[a-z_]+|BSP_[A-Z0-9_]+|PON_ERR_[A-Z_]+)\b(?!\.\.\.)")
HEADERS = ["include", "board/include", "board/host/include", "testing/include"]
VALUES = ("csv", "json")  # of an option that may stand before the command
REQUEST = re.compile(r"`(GET|POST|DELETE) /api/v1([^`\s?]*)")


def text_of(page):
    return page.read_text(encoding="utf-8")


def blocks_of(text):
    """Returns the blocks of code, without what sets them apart from the rest."""
    return [fenced if fenced else "\n".join(line[4:] for line in indented.strip("\n").splitlines())
            for _, fenced, indented in BLOCK.findall(text)]


def code_of(text):
    """Returns what pages show as code: in a sentence, or as a line of a block."""
    lines = INLINE.findall(BLOCK.sub("", text))
    return lines + [line.removeprefix("$ ") for block in blocks_of(text) for line in block.splitlines()]


def lines_of(*programs):
    """Returns what finds lines that begin with one of the programs."""
    return lambda text: [line for line in code_of(text) if line.startswith(tuple(f"{program} " for program in programs))]


class Named(unittest.TestCase):
    def assert_none(self, find, is_wrong):
        """Demands that something is found in the pages, and that nothing of it is wrong."""
        every = [(page.name, one) for page in PAGES for one in find(text_of(page))]
        self.assertTrue(every)
        self.assertEqual([(page, one, wrong) for page, one in every if (wrong := is_wrong(one))], [])

    def test_commands_and_their_options(self):
        self.assert_none(lines_of("ponctl", "ponsim", "ponfront"), wrong_in)

    def test_targets_of_make(self):
        makefile = text_of(ROOT / "Makefile")
        presets = re.search(r"^TEST_PRESETS := (.*)$", makefile, re.MULTILINE)[1].split()
        rules = re.findall(r"^([a-z][a-z -]*):", makefile, re.MULTILINE)
        targets = {target for rule in rules for target in rule.split()} | {f"test-{preset}" for preset in presets}
        self.assert_none(lines_of("make", "sudo make"), lambda line: line.removeprefix("sudo ").split()[1] not in targets)

    def test_functions_and_constants(self):
        files = [*(ROOT / "catalog").rglob("*.toml"), *(file for folder in HEADERS for file in (ROOT / folder).rglob("*.h"))]
        known = set(NAME.findall("".join(map(text_of, files)))) | {"bsp_pon", "bsp_testing"}
        self.assert_none(lambda text: NAME.findall("\n".join(code_of(text))), lambda name: name not in known)

    def test_files_and_folders(self):
        tops = {file.name for file in ROOT.iterdir()} - {"build"}
        places = [ROOT, *(ROOT / folder for folder in HEADERS)]
        self.assert_none(
            lambda text: [code for code in code_of(text) if re.fullmatch(r"(?!text/(?:plain|event))[\w.-]+/[\w./-]*", code) and code.split("/")[0] in tops],
            lambda path: not any((place / path).exists() or [*place.glob(f"{path}.*")] for place in places))

    def test_paths_of_rest_both_ways(self):
        document = json.loads(told_by(PROGRAMS["ponfront"], "/openapi.json")[0])
        operation = re.compile(r"(?<=/calls/)\w+$")
        served = {(method.upper(), operation.sub("{operation}", path)) for path, item in document["paths"].items() for method in item}
        self.assertEqual(set(REQUEST.findall(text_of(ROOT / "docs/rest.md"))), served)

    def test_keys_and_orders_of_scenarios(self):
        tables = {name: KEY.findall(keys) for name, keys in TABLE.findall(text_of(ROOT / "sim/scenario/keys.cpp"))}
        examples = [block for block in blocks_of(text_of(ROOT / "docs/scenarios.md")) if block.startswith(("[", "#"))]
        self.assertGreater(len(examples), 5)
        for example in examples:
            with self.subTest(example):
                values = tomllib.loads(example.replace("\n...", ""))
                self.assertEqual(unknown_keys(values, "scenario", tables), [])
                for event in values.get("event", []):
                    self.assertIn(event["do"].split()[0], words_of_control())


def unknown_keys(values, table, tables):
    """Returns which keys of a table of a scenario, and of the tables in it, there are not."""
    known = {key: (below, is_named) for key, below, is_named in tables[table]}
    wrong = [key for key in values if key not in known]
    for key, value in values.items():
        below, is_named = known.get(key, ("", ""))
        for inner in (value.values() if is_named else value if isinstance(value, list) else [value]) if below else []:
            wrong += unknown_keys(inner, below, tables)
    return wrong


@functools.lru_cache(maxsize=None)
def words_of_control():
    section = text_of(ROOT / "sim/ponsim.8").partition(".Ss Model time and control\n")[2].partition("\n.Ss ")[0]
    return set(re.findall(r"^\.It Cm ([a-z-]+)", section, re.MULTILINE))


@functools.lru_cache(maxsize=None)
def help_of(command):
    program, *words = command.split()
    return subprocess.run([PROGRAMS[program], *words, "--help"], capture_output=True, text=True, check=True, timeout=60).stdout


def needs_value(program, option):
    """Returns whether the word behind this one, which may be a global option, is its value."""
    return option.startswith("--") and bool(re.search(rf"^  (?:-\w,)?{re.escape(option)} [^\s\[]", help_of(program), re.MULTILINE))


def wrong_in(line):
    """Returns what the programs do not have of a command line."""
    try:
        words = shlex.split(re.split(r" [&|#<>]|\n", line)[0])
    except ValueError:
        return []  # it goes on in the next line of the page
    program, *words = words
    path, wrong, first = program, [], words[:1]
    options = [word for word in words if word.startswith("--")]
    words = [word for before, word in zip(["", *words], words) if not needs_value(program, before)]
    words = [word for word in words if re.fullmatch("[a-z][a-z0-9-]*", word) and word not in VALUES]
    while words and (group := re.search(rf"^Usage: {path} .*\bSUBCOMMAND", help_of(path), re.MULTILINE)):
        word = words.pop(0)
        if re.search(rf"^Usage: {path} {word}\b", help_of(f"{path} {word}"), re.MULTILINE):
            path += " " + word
        elif "[SUBCOMMAND" not in group[0] or "[OPTIONS] [SUBCOMMAND" in group[0] and [word] == first:
            wrong.append(word)
    order = re.search(r" ctl (?:--olt \S+ )?([a-z-]+)", line)
    path = "ponsim ctl" if order else path
    if order and order[1] not in words_of_control() | {"help"}:
        wrong.append(order[1])
    known = help_of(path) + help_of(program)
    return wrong + [option for option in options if not re.search(rf"(?<![\w-]){re.escape(option)}\b", known)]


if __name__ == "__main__":
    PROGRAMS = {pathlib.Path(program).name: program for program in sys.argv[1:4]}
    unittest.main(argv=sys.argv[:1])
