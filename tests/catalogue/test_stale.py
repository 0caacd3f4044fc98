"""What is committed is what the generator writes."""

import unittest

from generator import GENERATOR, ROOT, Copy, generate


class Stale(unittest.TestCase):
    def test_nothing_in_the_tree_is(self):
        self.assertEqual(generate(ROOT, "--check"), (0, ""))

    def test_file_that_was_edited_is_named(self):
        for file in GENERATOR.OUTPUTS:
            with self.subTest(file), Copy() as copy:
                with (copy.root / file).open("a", encoding="utf-8") as edited:
                    edited.write("edited\n")
                status, said = generate(copy.root, "--check")
                self.assertEqual(status, 1)
                self.assertEqual(said, f"generate.py: {file} is stale; run catalog/generate.py\n")

    def test_file_that_is_missing_is_named(self):
        with Copy() as copy:
            (copy.root / "include" / "bsp_pon.h").unlink()
            status, said = generate(copy.root, "--check")
            self.assertEqual(status, 1)
            self.assertIn("include/bsp_pon.h is stale", said)

    def test_catalogue_that_was_changed_makes_stale(self):
        with Copy() as copy:
            copy.replace("catalog/admission/binding.toml", "code    = 764", "code    = 765")
            status, said = generate(copy.root, "--check")
            self.assertEqual(status, 1)
            self.assertIn("include/bsp_pon.h", said)

    def test_check_writes_nothing(self):
        with Copy() as copy:
            copy.replace("catalog/admission/binding.toml", "code    = 764", "code    = 765")
            before = copy.contents()
            generate(copy.root, "--check")
            self.assertEqual(copy.contents(), before)

    def test_is_what_is_rewritten(self):
        with Copy() as copy:
            (copy.root / "include" / "bsp_pon.h").write_text("edited\n", encoding="utf-8")
            self.assertEqual(generate(copy.root), (0, "generate.py: wrote include/bsp_pon.h\n"))
            self.assertEqual(generate(copy.root, "--check"), (0, ""))


if __name__ == "__main__":
    unittest.main()
