"""This module has what the writers of Python share: the first line, docstrings, and names."""

import textwrap

from ..text import GENERATED

WIDTH = 116


def opening(brief):
    """Returns the first lines of a module. Nobody formats it, so that no tool needs to look at it."""
    return [f"# {GENERATED}.", *docstring([brief], ""), "", "from __future__ import annotations", ""]


def docstring(paragraphs, indent):
    """Returns a docstring of wrapped paragraphs. A paragraph may be (text, hanging indent)."""
    lines = []
    for each in paragraphs:
        text, hanging = each if isinstance(each, tuple) else (each, "")
        text = text.replace("\\", "\\\\").replace('"""', "'''")
        lines += textwrap.wrap(text, WIDTH - len(indent), subsequent_indent=hanging, break_long_words=False,
                               break_on_hyphens=False) or [""]
    if len(lines) == 1 and len(lines[0]) < WIDTH - len(indent) - 6 and not lines[0].endswith('"'):
        return [f'{indent}"""{lines[0]}"""']
    return [f'{indent}"""{lines[0]}', *(f"{indent}{line}".rstrip() for line in lines[1:]), f'{indent}"""']


def class_name(name):
    """Returns the name of the class for an entry: onu_mc_vlans gives OnuMcVlans."""
    return "".join(word.capitalize() for word in name.split("_"))


def call_of(name, values, indent):
    """Returns a call whose values stand on as many lines as they need."""
    line = f"{name}({', '.join(values)})"
    if len(indent) + len(line) <= 120:
        return line
    # A value is not broken: its blanks are none while lines are.
    joined = ", ".join(value.replace(" ", "\0") for value in values)
    rows = textwrap.wrap(joined, WIDTH - len(indent) - 4, break_long_words=False, break_on_hyphens=False)
    return "\n".join([f"{name}(", *(f"{indent}    {row}" for row in rows), f"{indent})"]).replace("\0", " ")
