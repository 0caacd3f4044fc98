"""This module writes the list of the library's exported functions, for the linker."""

from .text import GENERATED


def exports(catalogue):
    names = sorted(catalogue.taken)
    return "\n".join([f"# {GENERATED}.", "{", "    global:", *[f"        {name};" for name in names], "    local:", "        *;", "};"]) + "\n"
