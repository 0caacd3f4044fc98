"""This module makes pages of the site from pages of the manual."""

import html
import re
import subprocess

from docutils.nodes import make_id
from pages import write, write_below
from reference.text import escaped, html_block

BODY = re.compile(r'<div class="manual-text">\n(.*)</div>\n<table class="foot">', re.DOTALL)
SECTION = re.compile(r"</?section[^>]*>\n")
HEADING = re.compile(r"<h([12])[^>]*>(.*?)</h\1>\n", re.DOTALL)
OTHER = re.compile(r'<a class="Xr" href="([^"]*)\.html">(.*?)</a>', re.DOTALL)
HERE = re.compile(r'<a class="Sx" href="[^"]*">(.*?)</a>', re.DOTALL)
TAG = re.compile(r"<[^>]*>")


def write_manual(source, pages):
    """Makes a page of each page of the manual, and a list of them."""
    names = {f"{page.stem}.{page.suffix[1:]}": page for page in pages}
    for name, page in sorted(names.items()):
        said = subprocess.run(["mandoc", "-T", "html", "-O", "fragment,man=%N.%S.html", str(page)], check=True,
                              capture_output=True, text=True).stdout
        write_below(source / f"manual/{name}.md", page_of(name, said, names))
    listed = [f"- [{titled(name)}]({name}.md): {brief_of(page)}" for name, page in sorted(names.items())]
    write(source / "manual/index.md",
          "\n".join(["# The manual", "", "What `man` shows where the programs are installed.", "", *listed, ""]))


def titled(name):
    return "{}({})".format(*name.rsplit(".", 1))


def brief_of(page):
    """Returns what a page says of itself in a line."""
    return re.search(r"^\.Nd (.*)$", page.read_text(encoding="utf-8"), re.MULTILINE)[1]


def page_of(name, said, names):
    """Returns the page: it has its name as the heading, and its sections one level below."""
    text = OTHER.sub(lambda found: found[0] if found[1] in names and found[1] != name else found[2],
                     SECTION.sub("", BODY.search(said)[1]))
    text = HERE.sub(lambda found: f'<a href="#{make_id(text_of(found[1]))}">{found[1]}</a>', text)
    lines = [f"# {titled(name)}", ""]
    # Text, level and heading in turn, which begin and end with a text.
    first, *rest = HEADING.split(text)
    lines += html_block(first)
    for level, heading, below in zip(rest[0::3], rest[1::3], rest[2::3]):
        lines += ["#" * (int(level) + 1) + " " + words(heading, level), "", *html_block(below)]
    return "\n".join(lines)


def words(heading, level):
    """Sections are written in capitals, which are loud beside the headings of the other pages."""
    text = text_of(heading)
    return escaped(text.capitalize() if level == "1" else text)


def text_of(marked):
    return " ".join(html.unescape(TAG.sub("", marked)).split())
