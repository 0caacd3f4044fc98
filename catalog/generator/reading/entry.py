"""This module reads one entry of a TOML file and reports a wrong one."""

import re

IDENTIFIER = re.compile("[A-Za-z_][A-Za-z0-9_]*")


class CatalogueError(Exception):
    """This error says that the input is wrong. It names the file, the entry and the reason."""


class Entry:
    """An Entry is one TOML table. It knows its file and kind for messages, and checks that every key is known."""

    def __init__(self, file, kind, table, required, optional=()):
        self.file, self.kind, self.table = file, kind, table
        self.name = table.get("name", "?") if isinstance(table, dict) else "?"
        if not isinstance(table, dict):
            self.fail("not a table")
        for key in required:
            if key not in table:
                self.fail(f"'{key}' is missing")
        for key in table:
            if key not in required and key not in optional:
                self.fail(f"'{key}' is not a key of {kind} entries; known are {', '.join([*required, *optional])}")
        if "name" in required and not (isinstance(self.name, str) and IDENTIFIER.fullmatch(self.name)):
            self.fail("'name' must be a C identifier")

    def fail(self, reason):
        raise CatalogueError(f"{self.file}: {self.kind} {self.name}: {reason}")

    def get(self, key, default=None):
        return self.table.get(key, default)

    def text(self, key, default=None):
        value = self.table.get(key, default)
        if not isinstance(value, str) or (key == "brief" and not value.strip()):
            self.fail(f"'{key}' must be a text, not {value!r}")
        return value

    def number(self, key):
        value = self.table.get(key)
        if not isinstance(value, int) or isinstance(value, bool) or not 0 <= value <= 0xFFFFFFFF:
            self.fail(f"'{key}' must be a number from 0 to 4294967295, not {value!r}")
        return value

    def flag(self, key):
        value = self.table.get(key, False)
        if not isinstance(value, bool):
            self.fail(f"'{key}' must be true or false, not {value!r}")
        return value

    def choice(self, key, known, default=None):
        value = self.table.get(key, default)
        if not isinstance(value, str) or value not in known:
            self.fail(f"'{key}' must be one of {', '.join(known)}, not {value!r}")
        return value

    def items(self, key):
        value = self.table.get(key)
        if not isinstance(value, list):
            self.fail(f"'{key}' must be a list, not {value!r}")
        return value

    def lookup(self, key, entries):
        """Returns the entry that the value of our `key` names."""
        value = self.text(key)
        if value not in entries:
            self.fail(f"'{key}' names {value!r}, which does not exist")
        return entries[value]


def entries(file, table, kind, required, optional=()):
    """Returns the entries of one kind in a file."""
    tables = table.get(kind, [])
    if not isinstance(tables, list):
        raise CatalogueError(f"{file}: {kind} entries start with [[{kind}]]")
    return [Entry(file, kind, each, required, optional) for each in tables]


def add(entries, entry):
    if entry.name in entries:
        entry.fail(f"the name is taken by an entry of {entries[entry.name].file}")
    entries[entry.name] = entry
