"""This module writes the pages of channels, commands, records, statuses, views and layouts."""

from .fields import columns_of, rows_of
from .operations import page_of
from .text import code, impact, link, pages_list, plain, table


def write_tables(catalogue, put):
    write_channels(catalogue, put)
    write_commands(catalogue, put)
    write_records(catalogue, put)
    write_statuses(catalogue, put)
    write_shown("views", "Views", "The columns of the tables that the simulated service answers with, and ponctl shows.",
                catalogue.views, view_section, put)
    write_shown("layouts", "Layouts", "What the opaque parts of records hold.", catalogue.layouts, layout_section, put)


def write_channels(catalogue, put):
    lines = ["# Channels", "", f"The IPC module of the service is {catalogue.module}.", ""]
    for channel in catalogue.channels.values():
        lines += [f"## {channel.name}", "", f"Message type {channel.type}, {link(channel.record.name, 'records')}: "
                  f"{plain(channel.brief)}.", ""]
    put("channels", lines)


def write_commands(catalogue, put):
    operations = {}
    for family in catalogue.families:
        for operation in family.operations:
            operations.setdefault(operation.command, []).append(link(operation.name, f"operations/{family.group}"))
    lines = ["# Commands", "", "What each command code asks for, by channel. Where two commands share a code, the call tells "
             "which is meant.", ""]
    for command in sorted(catalogue.commands.values(), key=lambda command: (command.channel.type, command.code)):
        call = f", for {command.call.replace('_', '-')} calls" if command.call else ""
        lines += [f"## {command.name}", "", f"{command.code} on {link(command.channel.name, 'channels')}{call}; "
                  f"{impact(command)}. {plain(command.brief)}.", ""]
        used = operations.get(command, [])
        if used:
            lines += ["By " + ", ".join(used) + ".", ""]
    put("commands", lines)


def write_records(catalogue, put):
    lines = ["# Records", "", "Requests and answers. Integers are in host order; every byte that no field names is zero.", ""]
    for record in catalogue.records.values():
        lines += [f"## {record.name}", "", f"{plain(record.brief)} {record.size} bytes.", "",
                  *table(["field", "offset", "type", "unit", "what it is"], rows_of(record.fields))]
    put("records", lines)


def write_statuses(catalogue, put):
    lines = ["# Status words", "", "What an operation returns. Words of the service pass through the library unchanged.", ""]
    rows = [[code(status.name), str(status.value), "the library" if status.of_library else "the service",
             plain(status.brief)] for status in catalogue.statuses.values()]
    put("statuses", [*lines, *table(["name", "value", "who says it", "meaning"], rows)])


def write_shown(folder, title, what, entries, section, put):
    """Writes a page for each file of views or layouts, and a list of them."""
    pages = {}
    for entry in entries.values():
        pages.setdefault(page_of(entry), []).extend(section(entry))
    for page, lines in pages.items():
        put(f"{folder}/{page}", [f"# {title}: {words(page)}", "", *lines])
    every = [[link(entry.name, page_of(entry)), plain(entry.brief)] for entry in entries.values()]
    put(f"{folder}/index", [f"# {title}", "", what, "", *pages_list((page, words(page)) for page in sorted(pages)), "## All of them", "",
                            *table(["name", "what it is"], sorted(every))])


def words(page):
    return page.replace("_", " ")


def commands_of(entry):
    return ", ".join(link(command.name, "../commands") for command in entry.commands)


def view_section(view):
    return [f"## {view.name}", "", plain(view.brief), "", f"Commands: {commands_of(view)}.", "",
            *table(["column", "type", "unit", "title", "may be null", "what it is"], columns_of(view))]


def layout_section(layout):
    what = "the answers" if layout.of_answer else "what is kept" if layout.kept else "the requests"
    lines = [f"## {layout.name}", "", plain(layout.brief), "",
             f"In {link(layout.record.name, '../records')}, {what} of {commands_of(layout)}.", ""]
    if layout.present:
        lines += [f"What is left out stays as {link(layout.present.name, '../commands')} says.", ""]
    if layout.left_out:
        lines += [plain(layout.left_out), ""]
    return [*lines, *table(["field", "offset", "type", "unit", "what it is"], rows_of(layout.fields))]
