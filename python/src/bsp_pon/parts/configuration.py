"""The configuration of an OLT: saved, put back, and compared."""

from __future__ import annotations

import dataclasses
import hashlib
import json
import os
import pathlib
from collections.abc import Iterator, Sequence
from typing import Any, TypeAlias, cast

from .. import raw
from .._caller import Caller
from .._field import Value
from .._layout import Layout
from .._tables import COMMANDS, LAYOUTS
from .._write import block
from ..addresses import mac_text

_PART = LAYOUTS["config_part"]
_START = 24  # of the payload, in the record
_ONU_DATA = 352  # of an ONU's block, in its record
_ONU_CHANNELS = (raw.BSP_MSG_ONU_CFG, raw.BSP_MSG_ONU_INFO, raw.BSP_MSG_ONU_SNMP, raw.BSP_MSG_ONU_OAM)
_KINDS = {1: "line", 2: "sla", 3: "alarm"}  # of profiles

_Place: TypeAlias = tuple[str, str, str]


@dataclasses.dataclass(frozen=True)
class Setting:
    """One value that somebody configured: table "binding", key "1/5", name "description", value "first floor"."""

    table: str
    key: str
    name: str
    value: Value

    def __str__(self) -> str:
        value = "(secret)" if self.name == "password" else repr(self.value)
        return " ".join(filter(None, (self.table, self.key, self.name, "=", value)))


@dataclasses.dataclass(frozen=True)
class Difference:
    """A setting that is not the same in two configurations. None stands where nothing is configured."""

    table: str
    key: str
    name: str
    before: Value
    after: Value


class Configuration:
    """All that an OLT keeps, as the text that `olt.config.load` takes back. Raises ValueError where a text is none."""

    def __init__(self, text: str) -> None:
        self.text = text
        lines = text.split("\n")
        if lines.pop() != "":
            raise ValueError(f"line {len(lines) + 1}: the text is cut off here")
        if len(lines) < 2:
            raise ValueError("the text is too short for the configuration of an OLT")
        head, *rows, end = [_object(line, number) for number, line in enumerate(lines, 1)]
        if "ponsim_configuration" not in head or not isinstance(head.get("tables"), dict):
            raise ValueError("line 1: this is not the configuration of an OLT")
        self._tables = {name: _Table(name, table) for name, table in head["tables"].items()}
        self._rows = [_row(self._tables, row, number) for number, row in enumerate(rows, 2)]
        if end.get("rows") != len(self._rows):
            raise ValueError(f"line {len(lines)}: the text has another number of rows")

    @classmethod
    def from_file(cls, file: str | os.PathLike[str]) -> Configuration:
        """Returns the configuration that was saved in a file."""
        return cls(pathlib.Path(file).read_text(encoding="utf-8"))

    def save(self, file: str | os.PathLike[str]) -> None:
        """Saves it in a file, which only its user may read, because there may be passwords in it."""
        place = pathlib.Path(file)
        new = place.with_name(f".{place.name}.new")
        with open(os.open(new, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600), "w", encoding="utf-8") as out:
            out.write(self.text)
        new.replace(place)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Configuration) and self.text == other.text

    def __hash__(self) -> int:
        return hash(self.text)

    def __repr__(self) -> str:
        return f"<Configuration of {len(self._rows)} rows>"

    def settings(self) -> list[Setting]:
        """Returns what somebody configured, without the OLT's own state. Empty texts and lists configure nothing."""
        return [setting for table, cells in self._rows for setting in table.settings(cells)
                if setting.value not in ("", [])]


def differences(before: Configuration, after: Configuration) -> list[Difference]:
    """Returns the settings that are not the same, in the order of tables and rows."""
    old, new = ({(each.table, each.key, each.name): each.value for each in of.settings()} for of in (before, after))
    places: list[_Place] = sorted(old.keys() | new.keys(), key=lambda place: (place[0], _natural(place[1]), place[2]))
    return [Difference(*place, old.get(place), new.get(place)) for place in places if old.get(place) != new.get(place)]


class Configurations:
    """The configuration that the OLT has, and how it gets another one."""

    def __init__(self, call: Caller) -> None:
        self._call = call

    def read(self) -> Configuration:
        """Returns all that the OLT keeps."""
        memory, length = self._call(raw.bsp_profile_exec_get_cfgwr, raw.BSP_CMD_CONFIG_READ)
        with memory:
            return Configuration(memory.read(length).decode())

    def load(self, configuration: Configuration) -> None:
        """Has the OLT become the one of a configuration. All that it keeps is replaced, and its state, too.

        It takes the configuration of an OLT with the same seed, ports, arrivals and silent share; where it refuses,
        nothing is changed. `ponctl config apply` gives another OLT what fits, and keeps that one's own state.
        """
        if not isinstance(configuration, Configuration):
            raise TypeError(f"a Configuration is needed, not {configuration!r}; Configuration.from_file reads a file")
        text = configuration.text.encode()
        digest, size = hashlib.sha256(text).digest(), _PART.field("bytes").size
        for offset in range(0, len(text), size):
            part = text[offset:offset + size]
            values: dict[str, Value] = {"offset": offset, "total": len(text), "length": len(part), "digest": digest,
                                        "bytes": part}
            length = _PART.field("bytes").offset + len(part) - _START
            self._call(raw.bsp_profile_exec_set, raw.BSP_CMD_CONFIG_LOAD_PART,
                       block("config_part", values, _START, _PART.end - _START)[:length])
        self._call(raw.bsp_profile_exec_set, raw.BSP_CMD_CONFIG_LOAD,
                   block("config_load", {"digest": digest}, _START, len(digest)))


class _Table:
    """What the rows of a table hold."""

    def __init__(self, name: str, table: Any) -> None:
        self.name = name
        self.key, self.values, self.configured = ([str(each) for each in table.get(part, [])]
                                                  for part in ("key", "values", "configured"))

    def settings(self, cells: Sequence[Any]) -> Iterator[Setting]:
        key = self._key_text(cells)
        for name, cell in zip(self.values, cells[len(self.key):]):
            if name not in self.configured:
                continue
            fields = self._fields(cells, cell) if isinstance(cell, bytes) else {}
            for field, value in (fields or {name: _shown(name, cell)}).items():
                yield Setting(self.name, key, field, value)

    def number(self, cells: Sequence[Any], column: str) -> int:
        found = cells[self.key.index(column)] if column in self.key else 0
        return found if isinstance(found, int) else 0

    def _key_text(self, cells: Sequence[Any]) -> str:
        """Returns the key of a row as people write it: 1/5 for an ONU."""
        text = ""
        for place, (name, cell) in enumerate(zip(self.key, cells)):
            if name in ("one", "channel"):  # there is one row, and the command says the channel
                continue
            value = str(_shown(name, cell))
            if name == "command":
                value = self._command(cells) or value
            elif name == "kind":
                value = _KINDS.get(cell, value)
            if place == 1 and self.key[0] == "pon_port" and name in ("onu_id", "mac"):
                text += f"/{value}"
            else:
                text = f"{text} {name} {value}" if text else value
        return text

    def _command(self, cells: Sequence[Any]) -> str | None:
        """Returns the command by whose code a row is kept."""
        if "command" not in self.key:
            return None
        channels = (self.number(cells, "channel"),) if "channel" in self.key else _ONU_CHANNELS
        code, index = self.number(cells, "command"), self.number(cells, "idx")
        fitting = [name for name, (channel, number) in COMMANDS.items() if number == code and channel in channels]
        kept = {name: _layout(name, kept=True) for name in fitting}
        exact = [name for name in fitting if (layout := kept[name]) and layout.index in (None, index)]
        others = [name for name in fitting if not ((layout := kept[name]) and layout.index)]
        return next(iter(exact + others), None)

    def _fields(self, cells: Sequence[Any], content: bytes) -> dict[str, Value]:
        """Returns the fields of a block, or none where the catalogue does not know all of it."""
        if self.name == "profile":
            layout = LAYOUTS.get(f"profile_{_KINDS.get(self.number(cells, 'kind'), '')}")
            start = layout.end - len(content) if layout else 0  # its number and its name are kept apart
        else:
            command = self._command(cells) or ""
            layout = _layout(command, kept=True) or _layout(command, of_answer=True) or _layout(command)
            start = _start_of(layout) if layout else 0
        if layout is None or start < 0:
            return {}
        if layout.fields[-1].type == "text":  # only the bytes of a text are kept, without the room behind it
            content = content.ljust(layout.end - start, b"\0")
        if start + len(content) < layout.end or any(content[layout.end - start:]):
            return {}
        return layout.read(content, start)


def _layout(command: str, *, kept: bool = False, of_answer: bool = False) -> Layout | None:
    return next((layout for layout in LAYOUTS.values()
                 if command in layout.commands and (layout.kept, layout.of_answer) == (kept, of_answer)), None)


def _start_of(layout: Layout) -> int:
    """Returns where a block begins: those of ONUs where the data does, unless the setting is a word before it."""
    is_data = layout.record == "bsp_onu_msg" and layout.end > _ONU_DATA
    return _ONU_DATA if is_data else layout.fields[0].offset


def _shown(name: str, cell: Value) -> Value:
    return mac_text(cell) if isinstance(cell, bytes) and name == "mac" else cell


def _object(line: str, number: int) -> dict[str, Any]:
    try:
        found = json.loads(line)
    except (ValueError, RecursionError):
        found = None
    if not isinstance(found, dict):
        raise ValueError(f"line {number}: this is no line of a configuration")
    return found


def _row(tables: dict[str, _Table], row: dict[str, Any], number: int) -> tuple[_Table, list[Any]]:
    table, cells = tables.get(str(row.get("table"))), row.get("row")
    if table is None or not isinstance(cells, list) or len(cells) != len(table.key) + len(table.values):
        raise ValueError(f"line {number}: this is no row of a table that the first line names")
    return table, [_cell(cell, number) for cell in cells]


def _cell(cell: object, number: int) -> int | str | bytes:
    if isinstance(cell, dict):
        try:
            return bytes.fromhex(cast(str, cell["hex"]))
        except (KeyError, TypeError, ValueError):
            pass
    elif isinstance(cell, (int, str)):
        return cell
    raise ValueError(f"line {number}: a value is neither a number nor a text nor bytes")


def _natural(key: str) -> list[tuple[int, str]]:
    """Returns what puts keys in order, with numbers as numbers."""
    return [(int(word), "") if word.isdigit() else (-1, word) for word in key.replace("/", " ").split()]
