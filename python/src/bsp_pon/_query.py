"""Questions to the OLT, by the names of the catalogue's commands."""

from __future__ import annotations

import difflib
import sys
from typing import Any, NamedTuple

from . import raw, records, rows
from ._caller import explained
from ._layout import Values
from ._row import Row
from ._tables import LAYOUTS
from .database import Database
from .errors import Unknown


class Query(NamedTuple):
    operation: str
    given: tuple[str, ...]
    kind: str  # what it delivers: rows, bytes, record, number, or "in place": into a record of the caller
    read_by: str  # a view or a layout
    offset: int  # of what is delivered, in the record
    size: int  # of a number, in bytes
    record: str

    def ask(self, given: dict[str, int]) -> list[Row] | Values:
        """Asks the OLT that the calling thread reaches. Raises TypeError where the arguments are not those it takes."""
        if self.kind == "in place":
            return self._ask_in_place(given)
        if "out_len" in self.given:
            layout = LAYOUTS[self.read_by]
            given = {**given, "out_len": layout.end - self.offset}
        if set(given) != set(self.given):
            taken, those = (", ".join(names) or "nothing" for names in (self.given, given))
            raise TypeError(f"{self.operation} takes {taken}, not {those}")
        function = getattr(raw, self.operation)
        try:
            delivered: Any = function(**given)
        except (TypeError, OverflowError) as error:
            raise explained(error, function, (), given) from None
        if self.kind == "rows":
            database: Database = delivered
            return database.rows_of(rows.VIEWS[self.read_by])
        if self.kind == "number":
            delivered = int(delivered).to_bytes(self.size, sys.byteorder)
        return LAYOUTS[self.read_by].read(bytes(delivered), self.offset)

    def _ask_in_place(self, given: dict[str, int]) -> Values:
        record: Any = getattr(records, self.record)()
        prefix = "onu_" if self.record == "bsp_onu_msg" else ""
        for name, value in given.items():
            setattr(record, prefix + name, value)
        getattr(raw, self.operation)(record)
        return LAYOUTS[self.read_by].read(bytes(record))


def query(name: str) -> Query:
    from ._queries import QUERIES

    if name not in QUERIES:
        near = [each for each in QUERIES if name in each.split("_")] or difflib.get_close_matches(name, QUERIES)
        like = f"; like it are {', '.join(near)}" if near else ""
        raise Unknown(f"{name} is no question to the OLT{like}; Olt.questions() lists all")
    return QUERIES[name]
