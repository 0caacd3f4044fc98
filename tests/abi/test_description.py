"""These tests check that the library's binary interface is the committed one."""

import unittest

import abi
import describe


class Description(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.described = describe.describe()

    def test_is_the_committed_one(self):
        committed = describe.DESCRIPTION.read_text(encoding="utf-8")
        self.assertEqual(committed, self.described,
                         "the interface has changed; when it is meant: tests/abi/describe.py --write")

    def test_names_every_function_and_record(self):
        for name in abi.mapped_names():
            self.assertIn(f"function {name} ", self.described)
        for name in abi.structs():
            self.assertIn(f"record {name} ", self.described)


if __name__ == "__main__":
    unittest.main()
