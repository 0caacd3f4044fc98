"""This module writes which keys scenarios may have, as the simulator itself knows them."""

import re

from .text import code, table

TABLE = re.compile(r"static const Keys (\w+)\{(.*?)\};", re.DOTALL)
KEY = re.compile(r'\{"(\w+)"(?:,\s*(\w+))?(,\s*true)?\}')


def write_scenario_keys(source, put):
    """Reads the tables of keys from the source in which the simulator has them."""
    tables = {name: KEY.findall(keys) for name, keys in TABLE.findall(source)}
    if not all(tables.values()) or "scenario" not in tables:
        raise ValueError("the keys of scenarios are not written as this module expects them")
    rows = rows_of("", "scenario", tables)
    put("scenario-keys", ["# Keys of scenarios", "", "The tables of a scenario, and the keys that each may have. What they mean is in "
                          "[ponsim-scenario(5)](../manual/ponsim-scenario.5.md); [how they work together](../scenarios.md).", "",
                          *table(["table", "keys"], rows)])


def rows_of(path, name, tables):
    """Returns a row for the table and one for each table in it."""
    own = [code(key) for key, below, _ in tables[name] if not below]
    rows = [[code(path) if path else "the scenario itself", ", ".join(own)]]
    for key, below, is_named in tables[name]:
        if below:
            inner = f"{path.strip('[]')}.{key}".lstrip(".")
            rows += rows_of(f"[{inner}.NAME]" if is_named else f"[[{inner}]]", below, tables)
    return rows
