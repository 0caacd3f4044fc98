"""This module holds all entries of the catalogue."""

import tomllib

from .reading.commands import read_commands, read_statuses
from .reading.entry import CatalogueError
from .reading.families import read_family
from .reading.layouts import read_layouts
from .reading.operations import read_operation
from .reading.records import read_channels, read_records
from .reading.views import read_views

SUBSYSTEMS = ["frame", "admission", "generic", "upgrade", "loopdetect", "debug", "platform", "onu", "config"]
ENTRIES = ["channel", "command", "family", "function", "layout", "module", "operation", "record", "status", "type", "view"]


class Catalogue:
    """This class reads and checks all entries."""

    def __init__(self, checkout):
        self.checkout = checkout
        self.records, self.channels, self.commands, self.statuses = {}, {}, {}, {}
        self.layouts, self.views, self.families, self.types = {}, {}, [], {}
        self.taken, self.shown = {}, {}
        read_records(self, "catalog/records.toml")
        read_channels(self, "catalog/channels.toml")
        read_statuses(self, "catalog/status.toml")
        families = [file for name in SUBSYSTEMS for file in checkout.inputs(f"catalog/{name}")]
        views = checkout.inputs("catalog/views")
        layouts = checkout.inputs("catalog/layouts")
        loaded = {file: self.load(file) for file in [*families, *views, *layouts]}
        for file, table in loaded.items():
            read_commands(self, file, table)
        for file in families:
            read_family(self, file, loaded[file])
        for operation in self.operations():
            read_operation(self, operation)
        for file in layouts:
            read_layouts(self, file, loaded[file])
        for file in views:
            read_views(self, file, loaded[file])

    def load(self, file):
        try:
            table = tomllib.loads(self.checkout.read(file))
        except FileNotFoundError:
            raise CatalogueError(f"{file}: the file is missing") from None
        except (tomllib.TOMLDecodeError, UnicodeDecodeError) as error:
            raise CatalogueError(f"{file}: not TOML: {error}") from None
        for key in table:
            if key not in ENTRIES:
                raise CatalogueError(f"{file}: unknown entry '{key}'; known are {', '.join(ENTRIES)}")
        return table

    def operations(self):
        return [operation for family in self.families for operation in family.operations]
