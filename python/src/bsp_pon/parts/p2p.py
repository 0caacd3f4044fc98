"""Forwarding between the ONUs of an OLT."""

from __future__ import annotations

from typing import cast

from .. import answers, raw, records, rows
from .._caller import Caller, number_in
from .._field import Value
from .._tables import COMMANDS, LAYOUTS
from .._write import platform_block

_ANY = 128  # in the place of an ONU id: the port itself, or any ONU
_ACTIONS = ("forward", "drop")


class P2p:
    """Whether the OLT forwards frames from ONU to ONU, and which."""

    def __init__(self, call: Caller) -> None:
        self._call = call

    def ports(self) -> list[rows.P2p]:
        """Returns how forwarding stands at each PON port."""
        return self._call(raw.bsp_pon_get_p2p_state).rows_of(rows.P2p)

    def port(self, port: int) -> answers.P2pOfPort:
        """Returns how forwarding of a PON port is configured."""
        record = self._asked(port)
        self._call(raw.plat_bsp_funcget_json, record).close()
        return cast(answers.P2pOfPort, LAYOUTS["p2p_of_port"].read(bytes(record)))

    def entries(self, port: int) -> list[rows.P2pEntries]:
        """Returns the forwarding entries of a PON port. The one of the lowest number that matches decides."""
        return self._call(raw.plat_bsp_funcget_json, self._asked(port)).rows_of(rows.P2pEntries)

    def switch(self, port: int, on: bool, *, onu_id: int | None = None) -> None:
        """Switches forwarding of a PON port, of all for port 0, or of one ONU of it.

        Frames are forwarded between two ONUs while it is on for the port and for both of them. At first it is off for
        each port, and on for each ONU.
        """
        self._call(raw.bsp_p2p_state_set, port, _ANY if onu_id is None else onu_id, int(on))

    def configure(self, port: int, *, rest: str | None = None, rate: int | None = None,
                  vlans: tuple[int, int] | None = None, broadcast: bool | None = None,
                  multicast: bool | None = None) -> None:
        """Changes how a PON port forwards, and keeps what is not named.

        Args:
            rest: what becomes of frames that no entry concerns: drop or forward.
            rate: kbit/s of all frames between ONUs together, up to 1000000; 0 not limited.
            vlans: the first and the last VLAN that is forwarded; (0, 0) all.
            broadcast: whether broadcast frames are forwarded.
            multicast: whether multicast frames are forwarded.
        """
        if rest not in (None, "drop", "forward"):
            raise ValueError(f"rest: {rest!r} is not one of drop, forward")
        present = self.port(port)
        first, last = vlans or (present["first_vlan"], present["last_vlan"])
        values: dict[str, Value] = {
            "rate": present["rate"] if rate is None else rate, "first_vlan": first, "last_vlan": last,
            "broadcast": present["broadcast"] if broadcast is None else int(broadcast),
            "multicast": present["multicast"] if multicast is None else int(multicast),
        }
        self._call(raw.bsp_p2p_cfg_set, port, int((rest or present["rest"]) == "forward"),
                   platform_block("p2p_config", values, 10))

    def set_entry(self, port: int, number: int, action: str, *, to_port: int | None = None, to_onu: int | None = None,
                  from_onu: int | None = None, ethertype: int = 0, rate: int = 0) -> None:
        """Sets a forwarding entry of a PON port, in the place of the one of its number.

        Args:
            number: 0 to 31; the entry of the lowest number that matches decides.
            action: forward or drop.
            to_port: PON port that the frames go to; the same port where it is left out.
            to_onu: ONU id there; any where it is left out.
            from_onu: ONU id that the frames come from; any where it is left out.
            ethertype: which traffic, from 1536 (0x600) on; 0 all.
            rate: kbit/s, up to 1000000; 0 not limited.
        """
        if action not in _ACTIONS:
            raise ValueError(f"action: {action!r} is not one of {', '.join(_ACTIONS)}; remove_entry removes one")
        self._put_entry(port, number, ethertype, {
            "action": action, "from_onu": _ANY if from_onu is None else from_onu, "rate": rate,
            "to_port": port if to_port is None else to_port, "to_onu": _ANY if to_onu is None else to_onu})

    def remove_entry(self, port: int, number: int) -> None:
        """Removes a forwarding entry of a PON port."""
        self._put_entry(port, number, 0, {"action": "remove", "from_onu": _ANY, "to_port": port, "to_onu": _ANY})

    def own_port(self, port: int) -> int:
        """Returns which GE uplink takes what forwarding of a PON port leaves. 0 is any."""
        return self._call(raw.bsp_onu_p2p_own_port_get, port)

    def set_own_port(self, port: int, uplink: int) -> None:
        """Sets which GE uplink takes what forwarding of a PON port leaves. 0 is any."""
        self._call(raw.bsp_onu_p2p_own_port_set, port, uplink)

    def _put_entry(self, port: int, number: int, traffic: int, values: dict[str, Value]) -> None:
        number_in("number", number, 0, 31)
        self._call(raw.bsp_p2p_entry_set, port, traffic, number, platform_block("p2p_entry", values, 12))

    @staticmethod
    def _asked(port: int) -> records.bsp_plat_msg:
        return records.bsp_plat_msg(plat_cmd=COMMANDS["BSP_CMD_P2P_OWN_PORT_GET"][1], plat_port=port)
