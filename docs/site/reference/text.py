"""This module has what the pages of the reference share."""

import re

SPECIAL = re.compile(r"([\\`*_\[\]<>|{}#~$])")
# What a text marks as code, and commands, status words, records and operations that it names without a mark.
CODE = re.compile(r"`([^`]+)`|\b((?:BSP|PON)_[A-Z0-9_]+|bsp_[a-z0-9_]+)\b")


def plain(text):
    """Returns words as Markdown that shows them as they are, with identifiers as code."""
    parts, end = [], 0
    for found in CODE.finditer(text):
        parts += [escaped(text[end:found.start()]), code(found[1] or found[2])]
        end = found.end()
    return "".join([*parts, escaped(text[end:])])


def escaped(text):
    return SPECIAL.sub(r"\\\1", text)


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
