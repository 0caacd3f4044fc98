"""This module writes status words, commands and layouts as data, for the typed layer."""

from .text import opening


def tables(catalogue):
    lines = [*opening("Status words, commands, and what the parts of records mean, as data."),
             "from ._field import Field", "from ._layout import Layout", "",
             "# The name and the text of each status word.", "STATUSES: dict[int, tuple[str, str]] = {"]
    lines += [f"    {status.value}: ({status.name!r}, {status.brief!r})," for status in catalogue.statuses.values()]
    lines += ["}", "", "# The channel and the code of each command.", "COMMANDS: dict[str, tuple[int, int]] = {"]
    for command in catalogue.commands.values():
        lines.append(f"    {command.name!r}: ({command.channel.type}, {command.code}),")
    lines += ["}", "", "LAYOUTS: dict[str, Layout] = {"]
    for layout in catalogue.layouts.values():
        lines += layout_of(layout)
    return "\n".join([*lines, "}"]) + "\n"


def layout_of(layout):
    present = layout.present.name if layout.present else ""
    commands = "".join(f"{command.name!r}, " for command in layout.commands)
    lines = [f"    {layout.name!r}: Layout(",
             f"        {layout.name!r}, {layout.record.name!r}, ({commands}), {layout.of_answer},",
             f"        {present!r}, {layout.kept}, {layout.index}, {layout.brief!r},", "        ("]
    for field in layout.fields.values():
        if field.index == 0:
            lines.append(f"            {field_of(field)},")
    return [*lines, "        ),", "    ),"]


def field_of(field):
    meaning = [repr(field.base), repr(field.type), str(field.offset), str(field.size)]
    given = {"brief": field.brief, "unit": field.unit, "scale": field.scale if field.scale != 1 else None,
             "values": field.values, "flags": field.flags, "range": tuple(field.range or ()),
             "condition": field.condition, "where": tuple(field.where), "times": field.times if field.times > 1 else 0,
             "every": field.every, "counter": field.counter, "whole": field.whole, "part": field.part,
             "decider": field.decider, "forms": field.forms, "secret": field.secret}
    meaning += [f"{key}={value!r}" for key, value in given.items() if value]
    return f"Field({', '.join(meaning)})"
