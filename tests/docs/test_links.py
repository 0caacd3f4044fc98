"""These tests check what builds the site: that it mends links and the look, and finds links that lead nowhere."""

import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "docs/site"))

# pylint: disable=wrong-import-position
from check import complaints
from look import whole
from pages import LinkError, Pages


class Written(unittest.TestCase):
    """Pages that are written by hand, in a tree of their own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root, self.source = pathlib.Path(folder.name) / "tree", pathlib.Path(folder.name) / "source"
        for file, text in {"SECURITY.md": "# S\n", "examples/one.c": "int one;\n", "docs/index.md": "# I\n",
                           "docs/decisions/0001-a.md": "# 0001: A\n", "docs/pictures/p.svg": "<svg/>\n"}.items():
            self.put(file, text)

    def put(self, file, text):
        (self.root / file).parent.mkdir(parents=True, exist_ok=True)
        (self.root / file).write_text(text, encoding="utf-8")

    def mended(self, text):
        self.put("docs/page.md", text)
        Pages(self.root, self.source).gather()
        return (self.source / "page.md").read_text(encoding="utf-8")

    def test_a_page_of_the_root_has_another_place(self):
        self.assertEqual(self.mended("[s](../SECURITY.md#a)"), "[s](project/security.md#a)")

    def test_a_link_back_from_the_root_is_mended_too(self):
        self.put("SECURITY.md", "[i](docs/index.md) [d](docs/decisions)")
        self.mended("")
        self.assertEqual((self.source / "project/security.md").read_text(encoding="utf-8"),
                         "[i](../index.md) [d](../decisions/index.md)")

    def test_a_file_that_is_no_page_comes_along(self):
        self.assertEqual(self.mended("[one](../examples/one.c)"), "[one](files/examples/one.c)")
        self.assertEqual((self.source / "files/examples/one.c").read_text(encoding="utf-8"), "int one;\n")

    def test_a_page_of_the_manual_is_a_page_here(self):
        self.assertEqual(self.mended("[m](../sim/ponsim.8#alarms)"), "[m](manual/ponsim.8.md#alarms)")

    def test_pictures_and_links_to_elsewhere_stay(self):
        for text in ("![p](pictures/p.svg)", "[e](https://example.org/)", "[here](#there)"):
            self.assertEqual(self.mended(text), text)

    def test_a_link_that_leads_nowhere_is_refused(self):
        for link in ("nothing.md", "../examples", "../../outside.md"):
            with self.assertRaisesRegex(LinkError, "docs/page.md: the link .* leads nowhere"):
                self.mended(f"[n]({link})")

    def test_a_page_without_a_group_is_in_the_tree_of_contents(self):
        self.put("groups.toml", '[[group]]\ntitle = "T"\npages = ["decisions/index"]\nothers = true\n')
        self.put("docs/page.md", "# P\n")
        pages = Pages(self.root, self.source)
        pages.gather()
        pages.write_front_page(self.root / "groups.toml")
        self.assertIn("decisions/index\npage\n", (self.source / "index.md").read_text(encoding="utf-8"))


class Built(unittest.TestCase):
    """Pages of a site that is built."""

    def complaints_about(self, text, style=""):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "index.html").write_text(text, encoding="utf-8")
            (folder / "other.html").write_text('<h1 id="here">Other</h1>', encoding="utf-8")
            (folder / "site.css").write_text(style, encoding="utf-8")
            (folder / "picture.svg").write_text("<svg/>", encoding="utf-8")
            return complaints(folder)

    def test_what_is_there_is_found(self):
        self.assertEqual(self.complaints_about('<a href="other.html#here">o</a><img src="picture.svg"><a href="#">t</a>'
                                               '<a href="https://example.org/x">e</a>'), [])

    def test_a_missing_page_anchor_or_picture_is_told(self):
        for tag in ('<a href="none.html">', '<a href="other.html#none">', '<a href="#none">', '<img src="none.svg">'):
            self.assertEqual(len(self.complaints_about(tag)), 1, tag)

    def test_nothing_is_loaded_from_elsewhere(self):
        for tag in ('<script src="https://example.org/x.js">', '<link href="//example.org/x.css">'):
            self.assertRegex("".join(self.complaints_about(tag)), "from elsewhere", tag)

    def test_nor_does_a_style_sheet(self):
        self.assertEqual(self.complaints_about("", "a { background: url(picture.svg) } b { mask: url(data:image/svg+xml;x) }"), [])
        for url in ("/javascript/other.css", "https://example.org/other.css"):
            self.assertRegex("".join(self.complaints_about("", f"@import url({url});")), "site.css: loads .* from elsewhere")


class Look(unittest.TestCase):
    """The style sheet of the theme."""

    def test_dark_colours_are_there_for_systems_that_are_dark(self):
        style = '@import url(/javascript/normalize.css/normalize.css);\nbody[data-theme="dark"] { --ground: black; }\n'
        made = whole(style, "html { margin: 0; }")
        self.assertTrue(made.startswith("html { margin: 0; }\nbody[data-theme"))
        self.assertIn('(prefers-color-scheme: dark) { body:not([data-theme="light"]) { --ground: black; } }', made)

    def test_another_theme_is_refused(self):
        with self.assertRaisesRegex(ValueError, "not as this module expects"):
            whole('body[data-theme="dark"] { --ground: black; }', "")


if __name__ == "__main__":
    unittest.main()
