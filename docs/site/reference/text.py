"""This module has what the pages of the reference share."""

import re

SPECIAL = re.compile(r"([\\`*_\[\]<>|{}#~$])")
# A command, record, view or layout that a text names, or an operation.
IDENTIFIER = re.compile(r"\b((?:BSP|PON)_[A-Z0-9_]+|bsp_[a-z0-9_]+)\b")


def plain(text):
    """Returns words as Markdown that shows them as they are, with identifiers as code."""
    parts = IDENTIFIER.split(text)
    return "".join(code(part) if index % 2 else SPECIAL.sub(r"\\\1", part) for index, part in enumerate(parts))


def code(text):
    return f"`{text}`"


def table(titles, rows):
    """Returns a table, or nothing when there are no rows."""
    if not rows:
        return []
    return ["| " + " | ".join(titles) + " |", "|" + "---|" * len(titles),
            *("| " + " | ".join(row) + " |" for row in rows), ""]


def link(name, page):
    """Returns a link to the heading of this name."""
    return f"[`{name}`]({page}.md#{name.lower()})"


def impact(entry):
    return entry.impact.replace("_", "-")


def pages_list(pages):
    """Returns a list of links to pages, each of which is given with its title."""
    return [*(f"- [{plain(title)}]({page}.md)" for page, title in pages), ""]
