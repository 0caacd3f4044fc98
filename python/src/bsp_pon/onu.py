"""A bound ONU of an OLT."""

from __future__ import annotations

from typing import Any, cast

from . import raw, records, rows
from ._caller import Caller
from ._field import Value
from ._layout import Layout, Values
from ._query import Query, query
from ._queries import QUERIES, SETTINGS
from ._row import Row
from ._tables import COMMANDS, LAYOUTS
from ._write import platform_record, set_of
from .errors import Unknown


class Onu:
    """The ONU that is bound to an ONU id of a PON port. Most of it can be asked only while it is online."""

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

    def info(self) -> Values:
        """Returns what the ONU says it is: vendor, model, versions."""
        return cast(Values, self.ask("sn"))

    def unis(self) -> list[rows.OnuUnis]:
        """Returns its UNI ports."""
        return self._call(raw.bsp_pon_onu_get_uniobj_snmp, self.port, self.onu_id).rows_of(rows.OnuUnis)

    def links(self) -> list[rows.OnuLinks]:
        """Returns the links of its UNI ports."""
        return self._call(raw.bsp_pon_onu_ctc_get_linkstate, self.port, self.onu_id).rows_of(rows.OnuLinks)

    def vlans(self) -> list[rows.OnuVlans]:
        """Returns the VLANs of its UNI ports, as the OLT has them."""
        return self._call(raw.bsp_pon_onu_ctc_get_vlan_json, self.port, self.onu_id).rows_of(rows.OnuVlans)

    def config(self) -> list[rows.UniConfig]:
        """Returns how its UNI ports are configured."""
        return self._call(raw.bsp_pon_onu_get_portcfg_info, self.port, self.onu_id).rows_of(rows.UniConfig)

    def optics(self) -> Values:
        """Returns what its transceiver measures."""
        return cast(Values, self.ask("optics"))

    def describe(self, text: str) -> None:
        """Describes it in a text, which the OLT keeps."""
        self._call(raw.bsp_pon_onu_description, self.port, self.onu_id, text)

    def reboot(self) -> None:
        self._call(raw.bsp_pon_reboot_onu_batch, set_of("BSP_CMD_ONU_REBOOT_BATCH", self.port, [self.onu_id]))

    def release(self) -> None:
        """Releases its binding."""
        self._call(raw.bsp_pon_no_bind_onu_spec_id, self.port, self.onu_id)

    # Settings

    def set(self, name: str, *, uni: int | None = None, **fields: Value) -> None:
        """Changes fields of a setting, and keeps the rest: onu.set("vlan", uni=1, mode="tag", pvid=100).

        The settings and their fields are those of the catalogue's layouts, as `settings` and `fields_of` list them. The
        ONU has the setting a moment later. Raises ValueError where a field does not take a value; then nothing is sent.
        """
        layout_name, command, sender = _setting(name)
        layout = LAYOUTS[layout_name]
        record = records.bsp_onu_msg(onu_pon_port=self.port, onu_onu_id=self.onu_id)
        record.onu_uni_port = uni or 0
        content = bytearray(bytes(record))
        layout.write(fields, bytearray(content))  # what no ONU could have is refused before any is asked
        present = _reader(layout)
        if present:
            self._put_present(layout, present, uni, fields, content)
        layout.write(fields, content)
        request = records.bsp_onu_msg.from_bytes(bytes(content))
        request.onu_cmd = COMMANDS[command][1]
        self._call(getattr(raw, sender), request)

    def _put_present(self, layout: Layout, present: Query, uni: int | None, fields: dict[str, Value],
                     content: bytearray) -> None:
        """Puts into a request how the setting stands now."""
        given: dict[str, int] = {}
        if "uni_port" in present.given:
            if uni is None:
                raise TypeError(f"{layout.name} is a setting of a UNI port: uni is needed")
            given["uni_port"] = uni
        index = fields.get("index")
        if layout.has("index") and not isinstance(index, int):
            raise TypeError(f"{layout.name} is one of several: index is needed")
        if "index" in present.given:
            given["index"] = cast(int, index)
        answered = self._call(present.ask, {"pon_port": self.port, "onu_id": self.onu_id, **given})
        if isinstance(answered, list):
            for row in answered:
                if not layout.has("index") or getattr(row, "index", index) == index:
                    layout.write(_values_of(layout, row), content)
        else:
            layout.write({name: value for name, value in answered.items() if layout.has(name)}, content)

    @staticmethod
    def settings() -> list[str]:
        """Returns the names of all settings."""
        return sorted(SETTINGS)

    @staticmethod
    def fields_of(name: str) -> dict[str, str]:
        """Returns the fields of a setting, each with what it is."""
        return {field.name: field.brief for field in LAYOUTS[_setting(name)[0]].fields}

    # Bandwidth

    def sla(self) -> Values:
        """Returns its upstream bandwidth, in kbit/s, with priority and weight."""
        answered = self._call(query("sla").ask, {"pon_port": self.port, "onu_id": self.onu_id})
        return cast(Values, answered)

    def set_sla(self, **fields: Value) -> None:
        """Changes its upstream bandwidth, and keeps what is not named: onu.set_sla(maximum=50000)."""
        record = platform_record("sla", self.port, self.onu_id, {**self.sla(), **fields})
        self._call(raw.bsp_pon_onu_sla_config, record)

    def set_sla_down(self, maximum: int) -> None:
        """Sets its downstream bandwidth, in kbit/s."""
        record = platform_record("sla_down", self.port, self.onu_id, {"maximum": maximum})
        self._call(raw.bsp_pon_onu_sla_down_config, record)

    # Performance and images

    def monitor(self, on: bool) -> None:
        """Switches the counting of its UNI ports on or off."""
        self._call(raw.bsp_pon_onu_ctc_set_perf_monitor_status, self.port, self.onu_id, 1, int(on))

    def performance(self, uni: int, *, history: bool = False) -> Values:
        """Returns the counters of a UNI port in this quarter of an hour, or in the one before."""
        return cast(Values, self.ask("perf_history" if history else "perf_current", uni=uni))

    def push_image(self, image: bytes, version: str) -> None:
        """Sends it a software image, in parts. It starts it after a commit and a reboot."""
        layout = LAYOUTS["onu_image_part"]
        data = layout.field("data")
        for offset in range(0, len(image), data.size):
            part = image[offset:offset + data.size]
            content = bytearray(records.bsp_onu_msg.SIZE)
            layout.write({"offset": offset, "size": len(image), "length": len(part), "version": version, "data": part},
                         content)
            self._call(raw.bsp_pon_onu_ctc_upgrade, self.port, self.onu_id, bytes(content[352:data.offset + len(part)]))

    def commit_image(self) -> None:
        """Has it start its new image from the next restart on."""
        self._call(raw.bsp_pon_onu_ctc_upgrade_commit, self.port, self.onu_id)

    def image_state(self) -> Values:
        """Returns how far an image has come."""
        return cast(Values, self.ask("image_status"))

    def images(self) -> Values:
        """Returns what its two banks hold."""
        return cast(Values, self.ask("banks"))


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
