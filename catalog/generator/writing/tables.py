"""This module writes the catalogue as tables of C++."""

from .header import prototype
from .text import GENERATED, flag, quoted

KINDS = {"Record": "records", "Channel": "channels", "Command": "commands", "Status": "statuses", "Layout": "layouts",
         "View": "views", "Operation": "operations", "Function": "functions"}


def tables(catalogue):
    records, channels = list(catalogue.records.values()), list(catalogue.channels.values())
    commands = sorted(catalogue.commands.values(), key=lambda command: (command.channel.type, command.code))
    # This names the position of each entry in the tables.
    at = {None: "nullptr"}
    for kind, entries in (("records", records), ("channels", channels), ("commands", commands)):
        at.update({entry: f"&all_{kind}[{index}]" for index, entry in enumerate(entries)})
    for record in records:
        at.update({field: f"&{record.name}_fields[{index}]" for index, field in enumerate(record.fields.values())})

    lines = [f"// {GENERATED}.", "// clang-format off", '#include "repeated.h"', "", "namespace catalogue", "{",
             "namespace", "{", ""]
    for record in records:
        lines += field_rows(record)
    lines += table("Record", [record_row(record, at) for record in records])
    lines += table("Channel", [channel_row(channel, at) for channel in channels])
    lines += table("Command", [command_row(command, at) for command in commands])
    lines += table("Status", [status_row(status) for status in catalogue.statuses.values()])
    for layout in catalogue.layouts.values():
        lines += uses(layout, at) + repeated_rows(layout)
    lines += table("Layout", [layout_row(layout, at) for layout in catalogue.layouts.values()])
    for view in catalogue.views.values():
        lines += uses(view, at) + columns(view)
    lines += table("View", [view_row(view) for view in catalogue.views.values()])
    for operation in catalogue.operations():
        lines += parts_of(operation, at)
    lines += table("Operation", [operation_row(family.name, operation, at) for family in catalogue.families
                                 for operation in family.operations])
    lines += table("Function", [function_row(family.name, function) for family in catalogue.families
                                for function in family.functions])
    lines += ["} // namespace", "", f"const uint32_t module = {catalogue.module};", ""]
    for kind, plural in KINDS.items():
        lines += [f"std::span<const {kind}> {plural}()", "{", f"    return all_{plural};", "}", ""]
    return "\n".join([*lines, "} // namespace catalogue"]) + "\n"


def table(kind, rows):
    return [f"constexpr {kind} all_{KINDS[kind]}[] = {{", *rows, "};", ""]


def field_row(owner, field):
    meaning = [f".{key} = {owner.name}_{field.base}_{key}" for key in ("values", "flags") if getattr(field, key)]
    if field.range:
        meaning.append(f".range = Range{{{field.range[0]}, {field.range[1]}}}")
    if field.hexadecimal:
        meaning.append(".hexadecimal = true")
    if field.condition:
        meaning += [f".condition = {quoted(field.condition)}", f".where = {owner.name}_{field.base}_where"]
    if field.counter:
        meaning.append(f".counter = {quoted(field.counter)}")
    if field.part:
        meaning += [f".whole = {quoted(field.whole)}", f".part = {field.part}"]
    if field.decider:
        meaning += [f".decider = {quoted(field.decider)}", f".forms = {owner.name}_{field.base}_forms"]
    if field.secret:
        meaning.append(".secret = true")
    row = [quoted(field.base), f"FieldType::{field.type}", field.offset, field.size, quoted(field.unit), field.scale,
           quoted(field.brief)]
    members = ("name", "type", "offset", "size", "unit", "scale", "brief")
    return "{" + ", ".join([f".{member} = {value}" for member, value in zip(members, row)] + meaning) + "}"


def named_rows(owner, field):
    """Writes the names that the row of a field refers to, of values, of bits and of the values of other fields."""
    lines = []
    for key in ("values", "flags"):
        if names := getattr(field, key):
            rows = ", ".join(f"{{{quoted(name)}, {number}}}" for name, number in names.items())
            lines.append(f"constexpr Named {owner.name}_{field.base}_{key}[] = {{{rows}}};")
    if field.condition:
        rows = ", ".join(map(quoted, field.where))
        lines.append(f"constexpr std::string_view {owner.name}_{field.base}_where[] = {{{rows}}};")
    if field.decider:
        rows = ", ".join(f"{{{quoted(name)}, Notation::{notation}}}" for name, notation in field.forms.items())
        lines.append(f"constexpr Form {owner.name}_{field.base}_forms[] = {{{rows}}};")
    return lines


def field_rows(record):
    fields = record.fields.values()
    return [*(line for field in fields for line in named_rows(record, field)),
            f"constexpr Field {record.name}_fields[] = {{", *(f"    {field_row(record, field)}," for field in fields),
            "};", ""]


def repeated_rows(layout):
    fields = [field for field in layout.fields.values() if field.index == 0]
    rows = [f"    {{{field_row(layout, field)}, {field.times}, {field.every}}}," for field in fields]
    return [*(line for field in fields for line in named_rows(layout, field)),
            f"constexpr Repeated {layout.name}_rows[] = {{", *rows, "};", ""]


def record_row(record, at):
    return (f"    {{{quoted(record.name)}, {record.size}, {at[record.command]}, {at[record.payload]}, {record.name}_fields, "
            f"{quoted(record.brief)}}},")


def channel_row(channel, at):
    return f"    {{{quoted(channel.name)}, {channel.type}, {at[channel.record]}, {quoted(channel.brief)}}},"


def command_row(command, at):
    return (f"    {{{quoted(command.name)}, {command.code}, {at[command.channel]}, Class::{command.impact}, "
            f"{f'Call::{command.call}' if command.call else 'std::nullopt'}, {quoted(command.brief)}}},")


def status_row(status):
    return f"    {{{quoted(status.name)}, {status.value}, {flag(status.of_library)}, {quoted(status.brief)}}},"


def uses(entry, at):
    return [f"constexpr const Command *{entry.name}_commands[] = {{{', '.join(at[command] for command in entry.commands)}}};", ""]


def layout_row(layout, at):
    return (f"    {{{quoted(layout.name)}, {at[layout.record]}, {layout.name}_commands, expanded<{layout.name}_rows>, "
            f"{flag(layout.of_answer)}, {quoted(layout.brief)}, {at[layout.present]}, {quoted(layout.left_out)}, "
            f"{flag(layout.kept)}, {'std::nullopt' if layout.index is None else layout.index}}},")


def columns(view):
    rows = [f"constexpr Column {view.name}_columns[] = {{"]
    for column in view.columns.values():
        rows.append(f"    {{{quoted(column.name)}, {quoted(column.title)}, ColumnType::{column.type}, {flag(column.nullable)}, {quoted(column.unit)}, "
                    f"{quoted(column.brief)}, {flag(column.hexadecimal)}, Priority::{column.priority}}},")
    return [*rows, "};", ""]


def view_row(view):
    return f"    {{{quoted(view.name)}, {view.name}_commands, {view.name}_columns, {quoted(view.brief)}, {view.order}}},"


def parts_of(operation, at):
    """Writes what the row of an operation refers to."""
    lines = []
    for argument in operation.args.values():
        if argument.picked:
            references = ", ".join(at[field] for field in argument.picked)
            lines.append(f"constexpr const Field *{operation.name}_{argument.name}_fields[] = {{{references}}};")
    if operation.constants:
        constants = ", ".join(f"{{{at[field]}, {value}}}" for field, value in operation.constants)
        lines.append(f"constexpr Constant {operation.name}_constants[] = {{{constants}}};")
    if operation.odd:
        oddities = ", ".join(f"{{Facet::{facet}, {quoted(text)}}}" for facet, text in operation.odd.items())
        lines.append(f"constexpr Oddity {operation.name}_odd[] = {{{oddities}}};")
    if operation.args:
        lines.append(f"constexpr Argument {operation.name}_arguments[] = {{")
        lines += [argument_row(operation, argument, at) for argument in operation.args.values()]
        lines += ["};", ""]
    return lines


def argument_row(operation, argument, at):
    picked = f"{operation.name}_{argument.name}_fields" if argument.picked else "{}"
    return (f"    {{{quoted(argument.name)}, ArgumentType::{argument.type.replace('-', '_')}, {flag(argument.required)}, "
            f"{flag(argument.optional)}, {flag(argument.dropped)}, {at[argument.field]}, {argument.size}, {argument.skip}, "
            f"{argument.of.index if argument.of else -1}, Source::{argument.source or 'none'}, Key::{argument.key or 'none'}, "
            f"{argument.bound}, {quoted(argument.logged)}, {picked}, "
            f"{quoted(argument.brief)}}},")


def operation_row(family, operation, at):
    arguments = f"{operation.name}_arguments" if operation.args else "{}"
    odd = f"{operation.name}_odd" if operation.odd else "{}"
    constants = f"{operation.name}_constants" if operation.constants else "{}"
    logged_as = operation.via or operation
    return (f"    {{{quoted(operation.name)}, {quoted(family)}, {quoted(operation.brief)}, {quoted(operation.notes)},\n"
            f"     {at[operation.channel]}, {at[operation.record]}, {at[operation.command]}, Class::{operation.impact}, "
            f"Call::{operation.call}, ErrorPolicy::{operation.error_policy},\n"
            f"     RequestForm::{operation.request}, AnswerForm::{operation.answer}, {at[operation.response_record]}, "
            f"{operation.response_size}, {operation.preset}, {quoted(logged_as.name)}, {constants}, {odd}, {arguments}}},")


def function_row(family, function):
    call = " ".join(row.strip() for row in prototype(function, f"{function.returns.type} "))
    return (f"    {{{quoted(function.name)}, {quoted(family)}, {quoted(function.brief)}, {quoted(function.notes)}, "
            f"{quoted(call.removeprefix('BSP_PON_API ').replace('* ', '*'))}}},")
