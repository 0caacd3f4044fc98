"""Runs the generator on the tree, or on a copy of its input in which one thing is broken."""

import contextlib
import importlib.util
import io
import pathlib
import shutil
import tempfile
import unittest.mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
LOADED = importlib.util.spec_from_file_location("generate", ROOT / "catalog" / "generate.py")
GENERATOR = importlib.util.module_from_spec(LOADED)
LOADED.loader.exec_module(GENERATOR)


def generate(root, *options):
    """Exit status and what was said."""
    said = io.StringIO()
    with unittest.mock.patch("sys.argv", ["generate.py", "--root", str(root), *options]), \
            contextlib.redirect_stdout(said), contextlib.redirect_stderr(said):
        return GENERATOR.main(), said.getvalue()


class Copy:
    """A copy of what the generator reads and writes; a context manager."""

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name)
        shutil.copytree(ROOT / "catalog", self.root / "catalog")
        (self.root / "include").mkdir()
        shutil.copy(ROOT / "include" / "bsp_pon.h", self.root / "include")
        return self

    def __exit__(self, *_):
        self.folder.cleanup()

    def replace(self, file, old, new):
        """Replaces the first `old` of a file, which must be there. With nothing to replace, adds to the file's end."""
        path = self.root / file
        if not old:
            with path.open("a", encoding="utf-8") as added:
                added.write(new)
            return
        text = path.read_text(encoding="utf-8")
        if old not in text:
            raise AssertionError(f"{file} has no {old!r} to break")
        path.write_text(text.replace(old, new, 1), encoding="utf-8")

    def contents(self):
        return {path: path.read_bytes() for path in sorted(self.root.rglob("*")) if path.is_file()}
