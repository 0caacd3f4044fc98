"""What the methods of an ONU are made of: questions and settings by their names."""

from __future__ import annotations

from typing import Any, TypeVar, cast

from . import raw, records
from ._caller import Caller
from ._field import Value
from ._layout import Layout, Values
from ._query import Query, query
from ._queries import QUERIES, SETTINGS
from ._row import Row
from ._tables import COMMANDS, LAYOUTS
from .errors import Unknown

AnyRow = TypeVar("AnyRow", bound=Row)


class OnuBase:
    """An ONU that is bound to an ONU id of a PON port."""

    def __init__(self, call: Caller, port: int, onu_id: int) -> None:
        self._call = call
        self.port = port
        self.onu_id = onu_id

    def __repr__(self) -> str:
        return f"Onu({self.port}/{self.onu_id})"

    def ask(self, name: str, **given: int) -> Values | list[Row]:
        """Asks the ONU anything that the catalogue has a question for: onu.ask("sn"), onu.ask("phy_info", uni=1)."""
        found = query(name if name in QUERIES else f"onu_{name}")
        if "uni" in given:
            given = {**given, "uni_port": given["uni"]}
            del given["uni"]
        return self._call(found.ask, {"pon_port": self.port, "onu_id": self.onu_id, **given})

    def table(self, view: type[AnyRow], name: str, **given: int) -> list[AnyRow]:
        """Asks the ONU for a table, whose rows are those of a view."""
        return cast("list[AnyRow]", self.ask(name, **given))

    def set(self, setting: str, /, *, uni: int | list[int] | None = None, **fields: Value) -> None:
        """Changes fields of a setting, and keeps the rest: onu.set("vlan", uni=1, mode="tag", pvid=100).

        The settings and their fields are those of the catalogue's layouts, as `settings` and `fields_of` list them. The
        ONU has the setting a moment later. Raises ValueError where a field does not take a value; then nothing is sent.
        """
        if LAYOUTS[_setting(setting)[0]].has("uni"):
            self._send(setting, None, fields if uni is None else {**fields, "uni": cast(Value, uni)})
        elif uni is None or isinstance(uni, int):
            self._send(setting, uni, fields)
        else:
            raise TypeError(f"{setting}: uni is the number of a UNI port, not {uni!r}")

    def _send(self, setting: str, uni: int | None, fields: dict[str, Value]) -> None:
        layout_name, command, sender = _setting(setting)
        layout = LAYOUTS[layout_name]
        record = records.bsp_onu_msg(onu_pon_port=self.port, onu_onu_id=self.onu_id)
        record.onu_uni_port = uni or 0
        content = bytearray(bytes(record))
        layout.check(fields)  # what no ONU could have is refused before any is asked
        present = _reader(layout)
        if present:
            self._put_present(setting, present, uni, fields, content)
        layout.write(fields, content)
        request = records.bsp_onu_msg.from_bytes(bytes(content))
        request.onu_cmd = COMMANDS[command][1]
        self._call(getattr(raw, sender), request)

    def _set_given(self, name: str, given: dict[str, Any], *, uni: int | None = None, index: int | None = None) -> None:
        """Changes those fields of a setting that are given."""
        fields: dict[str, Any] = {field: value for field, value in given.items() if value is not None}
        if index is not None:
            fields["index"] = index
        if not given.keys() & fields.keys():
            raise TypeError(f"{name}: nothing to set; its fields are {', '.join(given)}")
        self._send(name, uni, fields)

    def _put_present(self, setting: str, present: Query, uni: int | None, fields: dict[str, Value],
                     content: bytearray) -> None:
        """Puts into a request how the setting stands now."""
        layout = LAYOUTS[_setting(setting)[0]]
        given: dict[str, int] = {}
        if "uni_port" in present.given:
            if uni is None:
                raise TypeError(f"{setting} is a setting of a UNI port: uni is needed")
            given["uni_port"] = uni
        index = fields.get("index")
        if layout.has("index") and not isinstance(index, int):
            raise TypeError(f"{setting} is one of several: index is needed")
        if "index" in present.given:
            given["index"] = cast(int, index)
        answered = self._call(present.ask, {"pon_port": self.port, "onu_id": self.onu_id, **given})
        if isinstance(answered, list):
            for row in answered:
                if not layout.has("index") or getattr(row, "index", index) == index:
                    layout.write(_values_of(layout, row), content, checked=False)
        else:
            layout.write({name: value for name, value in answered.items() if layout.has(name)}, content, checked=False)

    @staticmethod
    def settings() -> list[str]:
        """Returns the names of all settings."""
        return sorted(SETTINGS)

    @staticmethod
    def fields_of(name: str) -> dict[str, str]:
        """Returns the fields of a setting, each with what it is."""
        return {field.name: field.brief for field in LAYOUTS[_setting(name)[0]].fields}


def _setting(name: str) -> tuple[str, str, str]:
    if name not in SETTINGS:
        raise Unknown(f"{name} is no setting of an ONU; known are {', '.join(sorted(SETTINGS))}")
    return SETTINGS[name]


def _reader(layout: Layout) -> Query | None:
    """Returns what tells how a setting stands, or None where nothing does."""
    if not layout.present:
        return None
    return query(layout.present.removeprefix("BSP_CMD_").lower().removesuffix("_get"))


def _values_of(layout: Layout, row: Row) -> Values:
    """Returns the columns of a row that are fields of the setting, as far as there is a value."""
    values: Values = {}
    for column in row.COLUMNS:
        value: Any = getattr(row, column.name)
        if value is None or not layout.has(column.name):
            continue
        mask = next((name for name in (f"{column.name}_mask", "mask") if layout.has(name)), None)
        if layout.field(column.name).type == "ipv4" and mask and "/" in value:
            value, length = value.split("/")
            values[mask] = str(_mask(int(length)))
        values[column.name] = int(value) if isinstance(value, bool) else value
    return values


def _mask(length: int) -> str:
    bits = (0xFFFFFFFF << 32 - length) & 0xFFFFFFFF
    return ".".join(str(bits >> shift & 0xFF) for shift in (24, 16, 8, 0))
