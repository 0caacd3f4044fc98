"""This module gathers the pages that are written by hand, and mends their links for the place that they have here."""

import os
import pathlib
import re
import shutil
import tomllib

LINK = re.compile(r"(?<=\]\()([^()\s]+)(?=\))")
ELSEWHERE = ("http://", "https://", "mailto:", "#")
# Pages that stand in the root of the tree, where people look for them first.
OF_THE_ROOT = {
    "CHANGELOG.md": "project/changelog.md",
    "CODE_OF_CONDUCT.md": "project/code-of-conduct.md",
    "CONTRIBUTING.md": "project/contributing.md",
    "SECURITY.md": "project/security.md",
}
# What else can be the end of a link, and which page of the site is shown for it.
SHOWN_FOR = {"docs": "index.md", "docs/decisions": "decisions/index.md"}
OF_THE_MANUAL = re.compile(r"(?:sim|front|fleet)/([a-z.-]+\.[1-8])")


class LinkError(Exception):
    """This error says which link of which file leads nowhere."""


class Pages:
    """This class knows which file of the tree becomes which page."""

    def __init__(self, root, source):
        self.root, self.source = root, source
        written = [*sorted((root / "docs").glob("*.md")), *sorted((root / "docs/decisions").glob("*.md"))]
        self.of_files = {str(file.relative_to(root)): str(file.relative_to(root / "docs")) for file in written}
        self.of_files |= {file: page for file, page in OF_THE_ROOT.items() if (root / file).exists()}

    def gather(self):
        for file, page in self.of_files.items():
            put = write_below if page.startswith("decisions/") else write
            put(self.source / page, self.mended(file, page))
        shutil.copytree(self.root / "docs/pictures", self.source / "pictures", dirs_exist_ok=True)
        decisions = [page.removeprefix("decisions/") for page in self.of_files.values() if page.startswith("decisions/")]
        write(self.source / "decisions/index.md", "\n".join([
            "# Decisions", "", "What someone may question, why it was decided so, and what follows from it.", "",
            *(f"- [{self.title('docs/decisions/' + page)}]({page})" for page in decisions), ""]))

    def title(self, file):
        return (self.root / file).read_text(encoding="utf-8").partition("\n")[0].removeprefix("# ")

    def mended(self, file, page):
        """Returns the text of a file, whose links lead to the same from the page."""
        text = (self.root / file).read_text(encoding="utf-8")
        return LINK.sub(lambda found: self.place(found.group(), file, page), text)

    def place(self, link, file, page):
        """Returns where a link of a file leads from the page. A file that is no page comes along as it is."""
        if link.startswith(ELSEWHERE):
            return link
        path, hash_mark, anchor = link.partition("#")
        target = os.path.normpath(os.path.join(os.path.dirname(file), path))
        there = self.of_files.get(target) or SHOWN_FOR.get(target)
        if manual := OF_THE_MANUAL.fullmatch(target):
            there = f"manual/{manual[1]}.md"
        if not there and target.startswith("docs/pictures/"):
            there = target.removeprefix("docs/")
        if not there:
            if target.startswith("..") or not (self.root / target).is_file():
                raise LinkError(f"{file}: the link {link} leads nowhere")
            there = f"files/{target}"
            (self.source / there).parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(self.root / target, self.source / there)
        return os.path.relpath(there, os.path.dirname(page) or ".") + hash_mark + anchor

    def check(self, file):
        """Looks at the links of a file that is no page."""
        self.mended(file, "index.md")

    def write_front_page(self, groups_file):
        """Puts the groups of pages behind the text of the front page."""
        groups = tomllib.loads(groups_file.read_text(encoding="utf-8"))["group"]
        named = {page for group in groups for page in group["pages"]} | {"index"}
        others = [page.removesuffix(".md") for page in self.of_files.values()
                  if page.removesuffix(".md") not in named and "/" not in page]
        text = (self.source / "index.md").read_text(encoding="utf-8")
        for group in groups:
            pages = [*group["pages"], *(others if group.get("others") else [])]
            text += "\n".join(["", "```{toctree}", ":hidden:", f":caption: {group['title']}", "", *pages, "```", ""])
        write(self.source / "index.md", text)


def write(file: pathlib.Path, text: str):
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(text, encoding="utf-8")


def write_below(file: pathlib.Path, text: str):
    """Writes a page that only a list on another page leads to. Beside each page the site shows all the others that are
    in a tree of contents, and it would take long to build with hundreds of them.
    """
    write(file, "---\norphan: true\n---\n\n" + text)
