"""The library's binary interface is the committed one."""

import unittest

import abi
import describe


class Description(unittest.TestCase):
    maxDiff = None

    def test_is_the_committed_one(self):
        committed = describe.DESCRIPTION.read_text(encoding="utf-8")
        self.assertEqual(committed, describe.describe(),
                         "the interface has changed; when it is meant: tests/abi/describe.py --write")

    def test_names_every_function_and_record(self):
        described = describe.describe()
        for name in abi.mapped_names():
            self.assertIn(f"function {name} ", described)
        for name in abi.structs():
            self.assertIn(f"record {name} ", described)


if __name__ == "__main__":
    unittest.main()
