"""These tests check that the committed files are what the generator writes."""

import tempfile
import unittest
import unittest.mock

from copies import Copy, contents, generate, program, run


class Stale(unittest.TestCase):
    def test_nothing_in_the_tree_is(self):
        self.assertEqual(generate(Copy(), check=True), (0, ""))

    def test_file_that_was_edited_is_named(self):
        for file in program.COMMITTED:
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

    def test_folder_of_a_build_receives_what_has_changed(self):
        build = Copy(files={})
        self.assertEqual(generate(Copy(), build=build), (0, ""))
        self.assertEqual(build.files.keys(), program.BUILT.keys())
        written = dict(build.files)
        changed = Copy()
        changed.replace("catalog/status.toml", "value  = 4001", "value  = 4999")
        with unittest.mock.patch.object(build, "write", wraps=build.write) as write:
            self.assertEqual(generate(Copy(), build=build), (0, ""))
            write.assert_not_called()
            self.assertEqual(generate(changed, build=build), (0, ""))
        changes = {name for name, text in written.items() if build.files[name] != text}
        self.assertEqual(changes, {"service_words.h", "tables.cpp"})
        self.assertEqual({call.args[0] for call in write.call_args_list}, changes)


if __name__ == "__main__":
    unittest.main()
