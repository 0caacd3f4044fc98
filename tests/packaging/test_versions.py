"""Checks that all that names the version names the same one."""

import pathlib
import re
import subprocess
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def found_in(name: str, pattern: str) -> str:
    found = re.search(pattern, (ROOT / name).read_text(encoding="utf-8"), re.MULTILINE)
    assert found, f"{name} names no version"
    return found[1]


class Versions(unittest.TestCase):
    def test_whatever_names_the_version_names_that_of_the_project(self) -> None:
        version = found_in("CMakeLists.txt", r"^project\(bsp_pon VERSION ([0-9.]+)")
        for name, pattern in [
            ("debian/changelog", r"\Absp-pon \(([0-9.]+)\)"),
            ("python/pyproject.toml", r'^version = "([0-9.]+)"$'),
            ("python/pytest-ponsim/pyproject.toml", r'^version = "([0-9.]+)"$'),
        ]:
            with self.subTest(name):
                self.assertEqual(found_in(name, pattern), version)
        said = subprocess.run([ROOT / "packaging/version"], capture_output=True, text=True, check=True).stdout
        self.assertEqual(said, version + "\n")


if __name__ == "__main__":
    unittest.main()
