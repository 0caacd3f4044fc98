"""Profiles of an OLT: named settings of lines, bandwidth and alarms."""

from __future__ import annotations

from . import raw, rows
from ._caller import Caller
from ._field import Value
from ._layout import Values
from ._row import Row
from ._tables import COMMANDS, LAYOUTS
from ._write import block
from .errors import StatusError

_VIEWS: dict[str, type[Row]] = {"line": rows.LineProfiles, "sla": rows.SlaProfiles, "alarm": rows.AlarmProfiles}
_START = 24  # of the payload, in the record


class Profiles:
    """The profiles of an OLT. A kind is line, sla or alarm."""

    def __init__(self, call: Caller) -> None:
        self._call = call

    def list(self, kind: str) -> list[Row]:
        """Returns the profiles of a kind: rows of LineProfiles, SlaProfiles or AlarmProfiles."""
        view = _VIEWS[_known(kind)]
        return [*self._call(raw.bsp_profile_exec_get_json, _code(kind, "TABLE")).rows_of(view)]

    def get(self, kind: str, name: str) -> Values:
        """Returns a profile by its name. Raises StatusError PON_ERR_NO_PROFILE where there is none."""
        asked = block("profile_name", {"name": name}, _START, LAYOUTS["profile_name"].end - _START)
        fetched = LAYOUTS[f"profile_{_known(kind)}_fetched"]
        delivered = self._call(raw.bsp_profile_exec_get_, _code(kind, "FETCH"), asked, fetched.end - _START)
        return fetched.read(delivered[1], _START)

    def store(self, kind: str, name: str, **fields: Value) -> None:
        """Stores a profile. Of one that is there, what is not named stays as it is."""
        layout = LAYOUTS[f"profile_{_known(kind)}"]
        block(layout.name, fields, _START, layout.end - _START)  # a wrong value is refused before anything is asked
        try:
            present = self.get(kind, name)
        except StatusError as error:
            if error.name != "PON_ERR_NO_PROFILE":
                raise
            present = {}
        values: Values = {**present, **fields, "name": name}
        stored = block(layout.name, values, _START, layout.end - _START)
        self._call(raw.bsp_profile_exec_set, _code(kind, "STORE"), stored)

    def delete(self, kind: str, name: str) -> None:
        """Deletes a profile by its name."""
        asked = block("profile_name", {"name": name}, _START, LAYOUTS["profile_name"].end - _START)
        self._call(raw.bsp_profile_exec_set, _code(kind, "DELETE"), asked)


def _known(kind: str) -> str:
    if kind not in _VIEWS:
        raise ValueError(f"{kind!r} is no kind of profile; known are {', '.join(_VIEWS)}")
    return kind


def _code(kind: str, action: str) -> int:
    return COMMANDS[f"BSP_CMD_PROFILE_{_known(kind).upper()}_{action}"][1]
