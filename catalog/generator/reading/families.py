"""This module reads families: their operations, their types, and their functions that make no request."""

import dataclasses
import pathlib
import re

from .entry import CatalogueError, Entry, add, entries

FIRST_RELEASE = "0.1"


@dataclasses.dataclass
class Family:
    name: str
    group: str  # the name of its file, with its subsystem
    types: list
    functions: list
    operations: list


def read_family(catalogue, file, table):
    name = table.get("family")
    if not isinstance(name, str):
        raise CatalogueError(f"{file}: 'family' is missing")
    operations = entries(
        file, table, "operation", ["name", "brief", "args"],
        ["channel", "command", "class", "record", "call", "error_policy", "request", "answer", "via", "odd", "constants",
         "notes", "since"])
    for operation in operations:
        read_since(operation)
        add(catalogue.taken, operation)
    types = entries(file, table, "type", ["name", "brief", "members"])
    for entry in types:
        read_type(catalogue, entry)
    functions = entries(file, table, "function", ["name", "brief", "returns", "args"], ["notes", "since"])
    for function in functions:
        read_since(function)
        add(catalogue.taken, function)
        read_function(function)
    path = pathlib.PurePath(file)
    catalogue.families.append(Family(name, f"{path.parent.name}_{path.stem}", types, functions, operations))


def read_type(catalogue, entry):
    """Reads a structure that the library works on but never sends. It has words only."""
    entry.brief, entry.members = entry.text("brief"), []
    for table in entry.items("members"):
        member = Entry(entry.file, f"type {entry.name}: member", table, ["name", "words", "brief"])
        member.words, member.brief = member.number("words"), member.text("brief")
        entry.members.append(member)
    add(catalogue.types, entry)


def read_since(exported):
    """Reads which release a program needs at least that calls this."""
    exported.since = exported.text("since", FIRST_RELEASE)
    if not re.fullmatch(r"\d+\.\d+", exported.since):
        exported.fail(f"'since' is a release, as {FIRST_RELEASE}, not {exported.since!r}")


def read_function(function):
    """Reads a function that makes no request."""
    function.brief, function.notes, function.args = function.text("brief"), function.text("notes", ""), {}
    function.returns = Entry(function.file, f"function {function.name}: returns", function.get("returns"), ["type", "brief"])
    function.returns.brief, function.returns.type = function.returns.text("brief"), function.returns.text("type")
    for table in function.items("args"):
        argument = Entry(function.file, f"function {function.name}: argument", table, ["name", "declaration", "brief"])
        argument.brief, argument.declaration = argument.text("brief"), argument.text("declaration")
        if argument.declaration.count("{}") != 1:
            argument.fail("'declaration' holds {} where the name goes")
        add(function.args, argument)
