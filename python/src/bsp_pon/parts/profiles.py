"""Profiles of an OLT: named settings of lines, bandwidth and alarms, and those of UNI ports."""

from __future__ import annotations

from collections.abc import Sequence

from .. import raw, rows
from .._caller import Caller
from .._field import Value
from .._layout import Values
from .._row import Row
from .._tables import COMMANDS, LAYOUTS
from .._write import block
from ..errors import StatusError

_VIEWS: dict[str, type[Row]] = {"line": rows.LineProfiles, "sla": rows.SlaProfiles, "alarm": rows.AlarmProfiles}
_START = 24  # of the payload, in the record


class Profiles:
    """The profiles of an OLT. A kind is line, sla or alarm. Those of UNI ports have numbers, and no names."""

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

    def store_line(self, name: str, *, id: int | None = None, vlan: int | None = None, priority: int | None = None,
                   upstream: int | None = None, downstream: int | None = None, mac_limit: int | None = None) -> None:
        """Stores a line profile. Of one that is there, what is not named stays as it is.

        Args:
            id: number, 1 to 256; the lowest that is free where it is left out of a new one.
            vlan: VLAN of the service, 1 to 4094; 0 untagged.
            priority: 802.1p priority, 0 to 7.
            upstream: kbit/s at most, up to 1000000; 0 no limit.
            downstream: the same downstream.
            mac_limit: MAC addresses that may be learnt, up to 1024; 0 no limit.
        """
        self.store("line", name, **_given(id=id, vlan=vlan, priority=priority, upstream=upstream,
                                          downstream=downstream, mac_limit=mac_limit))

    def store_sla(self, name: str, *, id: int | None = None, fixed: int | None = None, assured: int | None = None,
                  maximum: int | None = None, priority: int | None = None, weight: int | None = None) -> None:
        """Stores an SLA profile. Of one that is there, what is not named stays as it is.

        Args:
            id: number, 1 to 256; the lowest that is free where it is left out of a new one.
            fixed: kbit/s that are granted whether used or not, up to 1000000.
            assured: further kbit/s that are granted when asked for.
            maximum: kbit/s that are never exceeded, 1 to 1000000.
            priority: 0 lowest to 7 highest.
            weight: 1 to 100.
        """
        self.store("sla", name, **_given(id=id, fixed=fixed, assured=assured, maximum=maximum, priority=priority,
                                         weight=weight))

    def store_alarm(self, name: str, *, id: int | None = None, temperature_low: float | None = None,
                    temperature_high: float | None = None, launch_power_low: float | None = None,
                    launch_power_high: float | None = None, received_power_low: float | None = None,
                    received_power_high: float | None = None) -> None:
        """Stores an alarm profile. Of one that is there, what is not named stays as it is.

        Args:
            id: number, 1 to 256; the lowest that is free where it is left out of a new one.
            temperature_low: degC, -40 to 120, below the high one.
            temperature_high: degC, -40 to 120.
            launch_power_low: dBm, -40 to 10, below the high one.
            launch_power_high: dBm, -40 to 10.
            received_power_low: dBm, -40 to 10, below the high one.
            received_power_high: dBm, -40 to 10.
        """
        self.store("alarm", name, **_given(
            id=id, temperature_low=temperature_low, temperature_high=temperature_high,
            launch_power_low=launch_power_low, launch_power_high=launch_power_high,
            received_power_low=received_power_low, received_power_high=received_power_high))

    def store(self, kind: str, name: str, **fields: Value) -> None:
        """Stores a profile of a kind. Of one that is there, what is not named stays as it is."""
        if not name:
            raise ValueError("name: a profile needs one")
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

    def unis(self, number: int = 0) -> Sequence[rows.UniProfiles]:
        """Returns the UNI profile of a number, 1 to 32, or all of them for 0."""
        return self._call(raw.bsp_pon_prof_uni_get, number).rows_of(rows.UniProfiles)

    def store_uni(self, number: int, *, admin: bool = True, autoneg: bool = True, pause: bool = False,
                  up: tuple[int, int, int] | None = None, down: tuple[int, int] | None = None,
                  vlan_mode: str = "transparent", pvid: int = 1, priority: int = 0, tpid: int = 0x8100,
                  vlans: Sequence[tuple[int, int]] = ()) -> None:
        """Stores all of a UNI profile, which says how a UNI port that takes it is configured.

        Args:
            number: 1 to 32.
            admin: whether the port is on.
            autoneg: whether it negotiates speed and duplex.
            pause: whether there is flow control.
            up: committed rate in kbit/s, 1 to 999999, committed and excess burst in bytes; None not limited.
            down: committed and peak rate in kbit/s, up to 999999; None not limited.
            vlan_mode: transparent, tag, translation or trunk.
            pvid: VLAN of untagged frames, 1 to 4094.
            priority: 802.1p priority of untagged frames, 0 to 7.
            tpid: type that a tag is known by.
            vlans: of a translation or trunk, up to 8 VLANs at the UNI port, and beyond the ONU.
        """
        cir, cbs, ebs = up or (1, 1522, 0)
        down_cir, down_pir = down or (0, 1)
        values: dict[str, Value] = {
            "admin": int(admin), "autoneg": int(autoneg), "pause": int(pause), "up_cir": cir, "up_cbs": cbs,
            "up_ebs": ebs, "down_cir": down_cir, "down_pir": down_pir, "up_on": int(up is not None),
            "down_on": int(down is not None), "vlan_mode": vlan_mode, "pvid": pvid, "priority": priority, "tpid": tpid,
            "user": [user for user, _ in vlans], "network": [network for _, network in vlans]}
        layout = LAYOUTS["uni_profile"]
        body = block("uni_profile", values, layout.start, layout.end - layout.start)
        self._call(raw.bsp_pon_prof_uni_set, number, 1, body)

    def delete_uni(self, number: int) -> None:
        """Deletes a UNI profile by its number."""
        self._call(raw.bsp_pon_prof_uni_set, number, 0, None)


def _given(**values: float | None) -> dict[str, Value]:
    return {name: value for name, value in values.items() if value is not None}


def _known(kind: str) -> str:
    if kind not in _VIEWS:
        raise ValueError(f"{kind!r} is no kind of profile; known are {', '.join(_VIEWS)}")
    return kind


def _code(kind: str, action: str) -> int:
    return COMMANDS[f"BSP_CMD_PROFILE_{_known(kind).upper()}_{action}"][1]
