"""This module has what the pages of the reference share.

Texts are HTML, in which what Markdown would take for a mark is written as a number, so that they are the same in a paragraph
and in a table. Tables are HTML as a whole: Sphinx takes minutes of work for the cells of Markdown's.
"""

import html
import re

from docutils.nodes import make_id

SPECIAL = re.compile(r"[\\`*_\[\]|{}#~$]")
# What a text marks as code, and commands, status words, records and operations that it names without a mark.
CODE = re.compile(r"`([^`]+)`|\b((?:BSP|PON)_[A-Z0-9_]+|bsp_[a-z0-9_]+)\b")


def plain(text):
    """Returns words as they are, with identifiers as code."""
    parts, end = [], 0
    for found in CODE.finditer(text):
        parts += [escaped(text[end:found.start()]), code(found[1] or found[2])]
        end = found.end()
    return "".join([*parts, escaped(text[end:])])


def escaped(text):
    return SPECIAL.sub(lambda found: f"&#{ord(found[0])};", html.escape(text))


def code(text):
    return f'<code class="docutils literal notranslate">{escaped(text)}</code>'


def html_block(text):
    """Returns lines that Markdown takes as they are."""
    return ["```{raw} html", text.strip("\n"), "```", ""] if text.strip() else []


def table(titles, rows):
    """Returns a table, or nothing when there are no rows."""
    if not rows:
        return []
    head = "".join(f"<th>{title}</th>" for title in titles)
    lines = [f"<thead><tr>{head}</tr></thead>"] if any(titles) else []
    body = ["<tr>" + "".join(f"<td>{cell}</td>" for cell in row) + "</tr>" for row in rows]
    return html_block("\n".join(['<div class="table-wrapper"><table class="docutils">', *lines, "<tbody>", *body,
                                 "</tbody></table></div>"]))


def link(name, page):
    """Returns a link to the heading of this name."""
    return f'<a href="{page}.html#{make_id(name)}">{code(name)}</a>'


def impact(entry):
    return entry.impact.replace("_", "-")


def pages_list(pages):
    """Returns a list of links to pages, each of which is given with its title."""
    return [*(f"- [{plain(title)}]({page}.md)" for page, title in pages), ""]
