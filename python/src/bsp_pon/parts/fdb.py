"""The forwarding database of an OLT: which stations it has learned, and where."""

from __future__ import annotations

from typing import TypeVar

from .. import raw, records, rows
from .._caller import Caller, number_in
from .._field import Value
from .._row import Row
from .._tables import COMMANDS, LAYOUTS
from .._write import platform_block

AnyRow = TypeVar("AnyRow", bound=Row)
_PAGE = 100  # rows, which is as many as there are in an answer


class Fdb:
    """The MAC addresses that the OLT has learned, and how it learns them."""

    def __init__(self, call: Caller) -> None:
        self._call = call

    def macs(self, port: int = 0, *, llid: int = 0, uni: int = 0, vlan: int = 0,
             mac: str | None = None) -> list[rows.MacTable]:
        """Returns the addresses behind ONUs, however many there are.

        Args:
            port: those of this PON port; 0 all.
            llid: those of this LLID of the port, 1 to 128, which is the ONU id and 1 more; 0 all.
            uni: those of this UNI port of their ONU; 0 all.
            vlan: those of this VLAN; 0 all.
            mac: this address.
        """
        return self._pages("BSP_CMD_MAC_GET", rows.MacTable, _filter(port=port, llid=llid, uni=uni, vlan=vlan, mac=mac))

    def network_macs(self, uplink: int = 0, *, vlan: int = 0, mac: str | None = None) -> list[rows.MacTableNni]:
        """Returns the addresses of the network side, of a GE uplink, or of all for uplink 0."""
        return self._pages("BSP_CMD_MAC_NNI_GET", rows.MacTableNni, _filter(port=uplink, vlan=vlan, mac=mac))

    def count(self, port: int = 0, *, llid: int = 0, uni: int = 0, vlan: int = 0) -> int:
        """Returns how many addresses there are behind ONUs."""
        return self._call(raw.bsp_pon_plat_mac_get, _query(_filter(port=port, llid=llid, uni=uni, vlan=vlan)))

    def network_count(self, uplink: int = 0, *, vlan: int = 0) -> int:
        """Returns how many addresses there are on the network side."""
        return self._call(raw.bsp_pon_plat_mac_nni_get, _query(_filter(port=uplink, vlan=vlan)))

    def ageing(self) -> int:
        """Returns for how many seconds an address stays that is not heard of. 0 is for ever."""
        return self._call(raw.bsp_pon_plat_mac_age_get)[0]

    def configure(self, ageing: int, *, learning: bool = True, port_limit: int = 0) -> None:
        """Configures all of it at once, because the OLT tells only the ageing.

        Args:
            ageing: seconds that an address stays that is not heard of, 10 to 1000000; 0 for ever.
            learning: whether addresses are learned, and known ones refreshed.
            port_limit: addresses that a PON port has at most; 0 not limited.
        """
        if ageing:
            number_in("ageing", ageing, 10, 1000000, "s")
        values: dict[str, Value] = {"ageing": ageing, "learning": int(learning), "port_limit": port_limit}
        self._call(raw.bsp_pon_plat_fdb_cfg_set, platform_block("fdb_config", values, 12))

    def flush(self, *, side: str = "both", port: int = 0, llid: int = 0, vlan: int = 0, mac: str | None = None) -> None:
        """Forgets addresses, all of them or those that all of this holds for.

        Args:
            side: both, PON or network.
            port: PON port, or GE uplink of the network side; 0 all. It needs a side.
            llid: LLID of the PON port; 0 all.
            vlan: VLAN; 0 all.
            mac: this address.
        """
        values: dict[str, Value] = {"side": side, **_filter(port=port, llid=llid, vlan=vlan, mac=mac)}
        self._call(raw.bsp_pon_plat_fdb_flush, platform_block("fdb_flush", values, 16))

    def _pages(self, command: str, view: type[AnyRow], wanted: dict[str, Value]) -> list[AnyRow]:
        found: list[AnyRow] = []
        while True:
            content = bytearray(records.bsp_plat_msg.SIZE)
            LAYOUTS["mac_query"].write({**wanted, "from": len(found), "count": _PAGE}, content)
            record = records.bsp_plat_msg.from_bytes(bytes(content))
            record.plat_cmd = COMMANDS[command][1]
            page = self._call(raw.bsp_pon_platform_by_db, record).rows_of(view)
            found += page
            if len(page) < _PAGE:
                return found


def _filter(*, mac: str | None = None, **numbers: int) -> dict[str, Value]:
    return {**numbers, **({} if mac is None else {"mac": mac})}


def _query(wanted: dict[str, Value]) -> bytes:
    return platform_block("mac_query", {**wanted, "count": 1}, 92)
