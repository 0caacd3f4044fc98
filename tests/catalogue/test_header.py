"""These tests check that the header tells users what the catalogue knows of an argument."""

import re
import unittest

from copies import Copy, committed

from generator.catalogue import Catalogue


def described():
    """Returns {(operation, argument): words} of the doc comments, each on one line."""
    found = {}
    for comment, name in re.findall(r"/\*\*(.*?)\*/\s*BSP_PON_API [^(]*?(\w+)\(", committed()["include/bsp_pon.h"], re.DOTALL):
        text = " ".join(line.strip(" *") for line in comment.splitlines())
        for argument, words in re.findall(r"@param (\w+) (.*?)(?=@param|@return|$)", text):
            found[name, argument] = words.strip()
    return found


class Header(unittest.TestCase):
    def setUp(self):
        self.described = described()
        self.operations = Catalogue(Copy()).operations()
        self.assertTrue(self.operations)

    def test_describes_every_argument(self):
        stated = {(operation.name, argument) for operation in self.operations for argument in operation.args}
        self.assertEqual(stated - set(self.described), set())

    def test_says_of_every_pointer_that_may_be_null_what_null_means(self):
        for operation in self.operations:
            for argument in operation.args.values():
                if argument.optional:
                    with self.subTest(f"{operation.name} {argument.name}"):
                        self.assertIn("null", self.described[operation.name, argument.name])

    def test_says_of_every_pointer_that_is_checked_that_it_must_not_be_null(self):
        for operation in self.operations:
            for argument in operation.args.values():
                with self.subTest(f"{operation.name} {argument.name}"):
                    self.assertEqual(argument.required,
                                     "must not be null" in self.described[operation.name, argument.name])


if __name__ == "__main__":
    unittest.main()
