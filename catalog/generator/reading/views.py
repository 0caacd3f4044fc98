"""This module reads what the simulated service puts into result tables."""

from .entry import Entry, add, entries
from .layouts import read_uses

COLUMN_TYPES = {"u32": "u32", "u64": "u64", "text": "text", "mac": "mac", "bool": "boolean", "real": "real"}
PRIORITIES = ["high", "normal", "low"]


def read_views(catalogue, file, table):
    for view in entries(file, table, "view", ["name", "commands", "brief", "columns"], ["order"]):
        view.brief, view.columns = view.text("brief"), {}
        read_uses(catalogue, view)
        add(catalogue.shown, view)
        for column in view.items("columns"):
            column = Entry(view.file, f"view {view.name}: column", column, ["name", "type", "title", "brief"],
                           ["unit", "nullable", "hexadecimal", "priority"])
            column.brief, column.title, column.unit = column.text("brief"), column.text("title"), column.text("unit", "")
            column.hexadecimal = column.flag("hexadecimal")
            if column.hexadecimal and (column.get("type") not in ("u32", "u64") or column.unit):
                column.fail("only numbers without a unit are 'hexadecimal'")
            column.nullable = column.flag("nullable")
            column.priority = column.choice("priority", PRIORITIES, "normal")
            column.type = COLUMN_TYPES[column.choice("type", COLUMN_TYPES)]
            add(view.columns, column)
        if not view.columns:
            view.fail("'columns' has none")
        view.order = view.number("order") if "order" in view.table else 0
        if view.order > len(view.columns):
            view.fail(f"'order' is more than its {len(view.columns)} columns")
        add(catalogue.views, view)
