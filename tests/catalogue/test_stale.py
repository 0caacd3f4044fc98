"""What is committed is what the generator writes."""

import tempfile
import unittest

from copies import Copy, contents, generate, program, run


class Stale(unittest.TestCase):
    def test_nothing_in_the_tree_is(self):
        self.assertEqual(generate(Copy(), check=True), (0, ""))

    def test_file_that_was_edited_is_named(self):
        for file in program.OUTPUTS:
            with self.subTest(file):
                copy = Copy()
                copy.replace(file, "", "edited\n")
                status, said = generate(copy, check=True)
                self.assertEqual(status, 1)
                self.assertEqual(said, f"generate.py: {file} is stale; run catalog/generate.py\n")

    def test_file_that_is_missing_is_named(self):
        copy = Copy()
        del copy.files["include/bsp_pon.h"]
        status, said = generate(copy, check=True)
        self.assertEqual(status, 1)
        self.assertIn("include/bsp_pon.h is stale", said)

    def test_catalogue_that_was_changed_makes_stale(self):
        copy = Copy()
        copy.replace("catalog/admission/binding.toml", "code    = 764", "code    = 765")
        status, said = generate(copy, check=True)
        self.assertEqual(status, 1)
        self.assertIn("include/bsp_pon.h", said)

    def test_check_writes_nothing(self):
        copy = Copy()
        copy.replace("catalog/admission/binding.toml", "code    = 764", "code    = 765")
        before = dict(copy.files)
        generate(copy, check=True)
        self.assertEqual(copy.files, before)

    def test_is_what_is_rewritten(self):
        copy = Copy()
        copy.files["include/bsp_pon.h"] = "edited\n"
        self.assertEqual(generate(copy), (0, "generate.py: wrote include/bsp_pon.h\n"))
        self.assertEqual(generate(copy, check=True), (0, ""))

    def test_program_checks_a_folder_and_writes_into_it(self):
        copy = Copy()
        copy.files["include/bsp_pon.h"] = "edited\n"
        with tempfile.TemporaryDirectory() as folder:
            copy.write_to(folder)
            self.assertEqual(run("--check", "--root", folder),
                             (1, "", "generate.py: include/bsp_pon.h is stale; run catalog/generate.py\n"))
            self.assertEqual(contents(folder), copy.files)
            self.assertEqual(run("--root", folder), (0, "generate.py: wrote include/bsp_pon.h\n", ""))
            self.assertEqual(contents(folder), Copy().files)


if __name__ == "__main__":
    unittest.main()
