"""Requests whose fields layouts name."""

from __future__ import annotations

from collections.abc import Iterable, Mapping
from typing import Any

from . import records
from ._field import Value
from ._layout import Layout
from ._tables import LAYOUTS


def pon_record(**fields: Any) -> records.bsp_pon_msg:
    return records.bsp_pon_msg(**fields)


def request_layout(command: str) -> Layout:
    """Returns the layout of a command's request."""
    for layout in LAYOUTS.values():
        if command in layout.commands and not layout.of_answer and not layout.kept:
            return layout
    raise KeyError(command)


def request_record(command: str, port: int, values: Mapping[str, Value]) -> records.bsp_pon_msg:
    """Returns a command's request about a PON port."""
    content = bytearray(records.bsp_pon_msg.SIZE)
    request_layout(command).write(values, content)
    record = records.bsp_pon_msg.from_bytes(bytes(content))
    record.pon_port = port
    return record


def set_of(command: str, port: int, onu_ids: Iterable[int]) -> records.bsp_pon_msg:
    """Returns a request for some ONUs of a port."""
    return request_record(command, port, {"onu_set": list(onu_ids)})


def block(layout_name: str, values: Mapping[str, Value], start: int, size: int) -> bytes:
    """Returns the bytes of a block that starts at an offset of its record, as values by name say."""
    layout = LAYOUTS[layout_name]
    content = bytearray(max(layout.end, start + size))
    layout.write(values, content)
    return bytes(content[start:start + size])


def platform_block(layout_name: str, values: Mapping[str, Value], size: int) -> bytes:
    """Returns a block of the platform channel."""
    return block(layout_name, values, 124, size)


def platform_record(layout_name: str, port: int, onu_id: int, values: Mapping[str, Value]) -> records.bsp_plat_msg:
    """Returns a record of the platform channel about an ONU."""
    content = bytearray(records.bsp_plat_msg.SIZE)
    LAYOUTS[layout_name].write(values, content)
    record = records.bsp_plat_msg.from_bytes(bytes(content))
    record.plat_port = port
    record.plat_arg4 = onu_id
    return record
