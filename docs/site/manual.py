"""This module makes pages of the site from pages of the manual."""

import re
import subprocess

from pages import write, write_below

NAMED = re.compile(r"(?<![`\w./-])([a-z][a-z.-]*)\(([1-8])\)(?![`\w])")


def write_manual(source, pages):
    """Makes a page of each page of the manual, and a list of them."""
    names = {f"{page.stem}.{page.suffix[1:]}": page for page in pages}
    for name, page in sorted(names.items()):
        said = subprocess.run(["mandoc", "-T", "markdown", str(page)], check=True, capture_output=True, text=True).stdout
        write_below(source / f"manual/{name}.md", page_of(name, said, names))
    listed = [f"- [{name.rpartition('.')[0]}({name.rpartition('.')[2]})]({name}.md): {brief_of(page)}"
              for name, page in sorted(names.items())]
    write(source / "manual/index.md",
          "\n".join(["# The manual", "", "What `man` shows where the programs are installed.", "", *listed, ""]))


def brief_of(page):
    """Returns what a page says of itself in a line."""
    return re.search(r"^\.Nd (.*)$", page.read_text(encoding="utf-8"), re.MULTILINE)[1]


def page_of(name, said, names):
    """Returns the page: it has its name as the heading, and its sections one level below."""
    title, section = name.rsplit(".", 1)
    # The first line names the page and the last one the date; neither is of use here.
    lines = said.rstrip("\n").split("\n")[1:-1]
    text = "\n".join(heading(line) for line in lines)
    return f"# {title}({section})\n" + NAMED.sub(lambda found: linked(found, name, names), text) + "\n"


def heading(line):
    """Sections are written in capitals, which are loud beside the headings of the other pages."""
    if line.startswith("# "):
        return "## " + line[2:].capitalize()
    return "#" + line if line.startswith("## ") else line


def linked(found, name, names):
    other = f"{found[1]}.{found[2]}"
    return f"[{found[0]}]({other}.md)" if other in names and other != name else found[0]
