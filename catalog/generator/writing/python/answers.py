"""This module writes what questions are answered with that is no table: a TypedDict for each layout of an answer."""

from .text import class_name, docstring, opening

NUMBERS = ("u8", "u16", "u32", "u64", "s16", "s32")


def answers(catalogue):
    lines = [*opening("Answers that are no tables: a TypedDict for each, a key for each value."),
             "from typing import TypedDict"]
    for layout in catalogue.layouts.values():
        if layout.of_answer:
            lines += class_of(layout)
    return "\n".join(lines) + "\n"


def class_of(layout):
    fields = [field for field in layout.fields.values() if field.index == 0]
    about = [layout.brief, "", *((description_of(field), "    ") for field in fields)]
    lines = ["", "", f"class {class_name(layout.name)}(TypedDict):", *docstring(about, "    "), ""]
    return [*lines, *(f"    {field.base}: {type_of(field)}" for field in fields)]


def description_of(field):
    """Returns what a field is, with its unit, and the names that stand for its numbers."""
    unit = f", in {field.unit}" if field.unit else ""
    names = [*(field.values or ()), *(field.flags or ())]
    return f"{field.base}: {field.brief}{unit}" + (f" ({', '.join(names)})" if names else "")


def type_of(field):
    """Returns the type of a field's value. A number that has a name is told by its name."""
    return f"list[{type_of_one(field)}]" if field.times > 1 else type_of_one(field)


def type_of_one(field):
    if field.decider:
        return "int | str | bytes"
    if field.values:
        return "str"
    if field.flags:
        return "list[str]"
    if field.type in NUMBERS:
        return "int" if isinstance(field.scale, int) else "float"
    if field.type in ("list", "ports", "idset"):
        return "list[int]"
    return "bytes" if field.type == "bytes" else "str"
