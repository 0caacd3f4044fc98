"""This module reads what the simulated service puts into opaque parts of records."""

from .entry import add, entries
from .records import ALIGNMENTS, read_fields


def read_layouts(catalogue, file, table):
    for layout in entries(file, table, "layout", ["name", "record", "commands", "brief"],
                          ["fields", "like", "answer", "present", "left_out", "kept", "index"]):
        if layout.get("like") is not None:
            if layout.get("fields") is not None:
                layout.fail("a layout has 'fields' of its own or is 'like' another, not both")
            layout.table = {**layout.table, "fields": layout.lookup("like", catalogue.layouts).get("fields")}
        layout.of_answer, layout.kept = layout.flag("answer"), layout.flag("kept")
        layout.index = layout.number("index") if layout.get("index") is not None else None
        if layout.kept and layout.of_answer or layout.index is not None and not layout.kept:
            layout.fail("what is 'kept' is no answer, and alone may have an 'index'")
        layout.brief, layout.record = layout.text("brief"), layout.lookup("record", catalogue.records)
        layout.fields = read_fields(layout, layout.record.size, ["u8", "mac", "text", "bytes", "list", "ports", "ipv4", "oui", "date", *ALIGNMENTS],
                                    "times", "every")
        read_uses(catalogue, layout)
        layout.present = layout.lookup("present", catalogue.commands) if layout.get("present") else None
        if layout.present and layout.of_answer:
            layout.fail("only what is sent starts from what is 'present'")
        layout.left_out = layout.text("left_out", "")
        if layout.left_out and (layout.present or layout.of_answer or layout.kept):
            layout.fail("'left_out' is for what is sent and starts from nothing that is 'present'")
        add(catalogue.shown, layout)
        add(catalogue.layouts, layout)


def read_uses(catalogue, entry):
    """Reads the commands that a layout or view belongs to."""
    entry.commands = []
    for name in entry.items("commands"):
        if not isinstance(name, str) or name not in catalogue.commands:
            entry.fail(f"'commands' names {name!r}, which does not exist")
        entry.commands.append(catalogue.commands[name])
