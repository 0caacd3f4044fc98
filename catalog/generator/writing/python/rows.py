"""This module writes a dataclass for the rows of each view."""

from .text import class_name, docstring, opening

TYPES = {"u32": "int", "u64": "int", "text": "str", "mac": "str", "boolean": "bool", "real": "float"}


def rows(catalogue):
    lines = [*opening("The rows of result tables, as dataclasses: a class for each view, a member for each column."),
             "from dataclasses import dataclass", "from typing import ClassVar", "",
             "from ._row import Column, Row"]
    for view in catalogue.views.values():
        lines += class_of(view)
    lines += ["", "", "# The class of each view's rows, by the name of the view.", "VIEWS: dict[str, type[Row]] = {"]
    lines += [f'    "{view.name}": {class_name(view.name)},' for view in catalogue.views.values()]
    return "\n".join([*lines, "}"]) + "\n"


def class_of(view):
    columns = list(view.columns.values())
    about = [view.brief, ""]
    for column in columns:
        unit = f", in {column.unit}" if column.unit else ""
        about.append((f"{column.name}: {column.brief}{unit}", "    "))
    lines = ["", "", "@dataclass(frozen=True)", f"class {class_name(view.name)}(Row):", *docstring(about, "    "), "",
             f'    VIEW: ClassVar[str] = "{view.name}"', "    COLUMNS: ClassVar[tuple[Column, ...]] = ("]
    for column in columns:
        lines.append(f'        Column("{column.name}", {TYPES[column.type]}, {column.nullable}, "{column.unit}"),')
    lines += ["    )", ""]
    for column in columns:
        kind = TYPES[column.type]
        lines.append(f"    {column.name}: {f'{kind} | None' if column.nullable else kind}")
    return lines
