"""This module runs the generator on copies in memory of what it reads and writes. A test may break one thing in them.
"""

import contextlib
import functools
import io
import pathlib
import subprocess
import sys
import tomllib
import unittest.mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = ROOT / "catalog" / "generate.py"
sys.path.insert(0, str(PROGRAM.parent))

from generator import program

# The generator spends most of its time on reading TOML, and each case breaks only one file of fifty.
PARSED = functools.cache(tomllib.loads)


@functools.cache
def committed():
    """Returns {path from the root: text} of all that the generator reads, and of the committed files that it writes."""
    paths = [*(ROOT / "catalog").rglob("*.toml"), *(ROOT / name for name in program.COMMITTED)]
    return {str(path.relative_to(ROOT)): path.read_text(encoding="utf-8") for path in sorted(paths)}


class Copy:
    """This is a checkout in memory, or in another folder."""

    def __init__(self, files=None):
        self.files = dict(committed() if files is None else files)

    def inputs(self, folder):
        return [name for name in sorted(self.files) if str(pathlib.PurePath(name).parent) == folder and name.endswith(".toml")]

    def read(self, name):
        if name not in self.files:
            raise FileNotFoundError(name)
        return self.files[name]

    def write(self, name, text):
        self.files[name] = text

    def replace(self, name, old, new):
        """Replaces the first `old` of a file, which must be there. With nothing to replace, adds to the file's end."""
        text = self.files.get(name, "")
        if old not in text:
            raise AssertionError(f"{name} has no {old!r} to break")
        self.files[name] = text.replace(old, new, 1) if old else text + new

    def write_to(self, folder):
        for name, text in self.files.items():
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")


def contents(folder):
    """Returns {path from the folder: text} of all files in the folder."""
    paths = sorted(pathlib.Path(folder).rglob("*"))
    return {str(path.relative_to(folder)): path.read_text(encoding="utf-8") for path in paths if path.is_file()}


def run(*options):
    """Returns the exit status, the standard output and the standard error of the program."""
    done = subprocess.run([sys.executable, "-B", PROGRAM, *options], capture_output=True, text=True)
    return done.returncode, done.stdout, done.stderr


def generate(copy, check=False, build=None):
    """Returns the exit status and what was printed."""
    said = io.StringIO()
    with unittest.mock.patch("tomllib.loads", PARSED), contextlib.redirect_stdout(said), contextlib.redirect_stderr(said):
        return program.generate(copy, check, build), said.getvalue()
