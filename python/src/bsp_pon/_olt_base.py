"""What an OLT is asked by name, the tables that it has of many ONUs, and its parts."""

from __future__ import annotations

import os
from typing import TypeVar, cast

from . import answers, raw, rows
from ._caller import Caller
from ._layout import Values
from ._queries import QUERIES
from ._query import query
from ._row import Row
from .parts import Chip, Configurations, Fdb, LoopDetection, Modules, P2p, Profiles, Upgrades

AnyRow = TypeVar("AnyRow", bound=Row)


class OltBase:
    """An OLT that can be asked, with its parts."""

    def __init__(self, directory: str | os.PathLike[str] | None = None, timeout: float | None = None) -> None:
        # Calls a function of the exact layer at this OLT: olt.call(raw.bsp_pon_no_bind_onu_all, 3).
        self.call = Caller(None if directory is None else os.fspath(directory), timeout)
        self.config = Configurations(self.call)
        self.profiles = Profiles(self.call)
        self.upgrades = Upgrades(self.call)
        self.fdb = Fdb(self.call)
        self.p2p = P2p(self.call)
        self.loop_detection = LoopDetection(self.call)
        self.modules = Modules(self.call)
        self.chip = Chip(self.call)

    def __repr__(self) -> str:
        return f"{type(self).__name__}({self.call.directory!r})"

    def ask(self, name: str, **given: int) -> Values | list[Row]:
        """Asks anything that the catalogue has a question for, by its name: olt.ask("optics_diag", pon_port=3).

        Returns rows, or values by the names of the catalogue's layouts.
        """
        return self.call(query(name).ask, given)

    @staticmethod
    def questions() -> list[str]:
        """Returns the names of all questions."""
        return sorted(QUERIES)

    def values(self, name: str, **given: int) -> Values:
        """Asks for what is no table."""
        return cast(Values, self.ask(name, **given))

    def table(self, view: type[AnyRow], name: str, **given: int) -> list[AnyRow]:
        """Asks for a table, whose rows are those of a view."""
        answered = self.ask(name, **given)
        return [row for row in answered if isinstance(row, view)]

    # Tables of many ONUs

    def optics(self, port: int = 0) -> list[rows.OnuOpticsTable]:
        """Returns the light of all ONUs of a port, or of all ports for port 0."""
        if port:
            return self.call(raw.bsp_pon_get_onu_optical_diag_by_pon, port).rows_of(rows.OnuOpticsTable)
        return self.call(raw.bsp_pon_get_onu_optical_diag_data_all).rows_of(rows.OnuOpticsTable)

    def stats(self) -> list[rows.OnuStatsTable]:
        """Returns the counters of all ONUs."""
        return self.call(raw.bsp_pon_get_onu_perf_stat_data_all).rows_of(rows.OnuStatsTable)

    def slas(self, port: int) -> list[rows.Slas]:
        """Returns the upstream SLAs of a port."""
        return self.call(raw.bsp_pon_onu_sla_get_web, port).rows_of(rows.Slas)

    def slas_down(self, port: int) -> list[rows.SlasDown]:
        """Returns the downstream SLAs of a port."""
        return self.call(raw.bsp_pon_onu_sla_down_get_web, port).rows_of(rows.SlasDown)

    def bandwidth(self, port: int) -> answers.SlaOfPort:
        """Returns how much upstream bandwidth of a port is promised to its ONUs by SLAs, and what is left, in kbit/s.
        """
        return cast(answers.SlaOfPort, self.values("sla_port", pon_port=port))

    def bandwidths(self) -> list[rows.SlasOfPorts]:
        """Returns the same of each port, as a table."""
        return self.call(raw.bsp_pon_onu_sla_get_snmp).rows_of(rows.SlasOfPorts)

    def capabilities(self) -> list[rows.OnuCapabilities]:
        """Returns what the bound ONUs are able to."""
        return self.call(raw.bsp_pon_get_onu_cap_snmp).rows_of(rows.OnuCapabilities)

    def unis(self) -> list[rows.UniAttributes]:
        """Returns the UNI ports of all ONUs."""
        return self.call(raw.bsp_pon_get_uni_attribute_snmp).rows_of(rows.UniAttributes)

    def serial_numbers(self, port: int) -> list[rows.OnuSerialNumbers]:
        """Returns who the ONUs of a port are: vendor, model, versions."""
        return self.call(raw.bsp_pon_onu_ctc_get_sn_ponport, port).rows_of(rows.OnuSerialNumbers)

    def stations(self, port: int) -> list[rows.Arp]:
        """Returns the ARP table of a port: the stations behind its ONUs."""
        return self.call(raw.bsp_pon_get_arptable, port).rows_of(rows.Arp)

    def wans(self, port: int) -> list[rows.OnuWanTable]:
        """Returns the WAN connections of the ONUs of a port."""
        return self.call(raw.bsp_pon_onu_ctc_get_wanctab, port).rows_of(rows.OnuWanTable)

    def wlans(self, port: int) -> list[rows.OnuWlanTable]:
        """Returns the WLANs of the ONUs of a port."""
        return self.call(raw.bsp_pon_onu_ctc_get_wlantab, port).rows_of(rows.OnuWlanTable)

    def catv_ports(self, port: int) -> list[rows.OnuCatvTable]:
        """Returns the CATV ports of the ONUs of a port."""
        return self.call(raw.bsp_pon_onu_ctc_get_catvtab, port).rows_of(rows.OnuCatvTable)

    def sip_users(self, port: int) -> list[rows.OnuSipTable]:
        """Returns the SIP users of the ONUs of a port."""
        return self.call(raw.bsp_pon_onu_ctc_get_sipusertab, port).rows_of(rows.OnuSipTable)
