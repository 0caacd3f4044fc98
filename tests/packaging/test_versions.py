"""Checks that all that names the version names the same one."""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def found_in(name: str, pattern: str) -> str:
    found = re.search(pattern, (ROOT / name).read_text(encoding="utf-8"), re.MULTILINE)
    assert found, f"{name} names no version"
    return found[1]


class Versions(unittest.TestCase):
    def test_packages_have_the_version_of_the_project(self) -> None:
        self.assertEqual(found_in("debian/changelog", r"^bsp-pon \(([0-9.]+)\)"),
                         found_in("CMakeLists.txt", r"^project\(bsp_pon VERSION ([0-9.]+)"))


if __name__ == "__main__":
    unittest.main()
