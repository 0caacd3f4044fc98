"""The PON chip of an OLT and its interfaces, for whoever looks for what is wrong."""

from __future__ import annotations

from typing import Any, cast

from .. import answers, raw
from .._caller import Caller, number_in
from .._field import Value
from .._query import query
from .._write import platform_block

_DISCOVERY, _TIMEOUTS, _GRANTS = 1, 2, 3
_BEHAVIOURS = ("learned", "forwarded", "dropped")


class Chip:
    """Counters, registers and behaviour of ports, and parameters of the multi-point control protocol (MPCP)."""

    def __init__(self, call: Caller) -> None:
        self._call = call

    def pon_stats(self, port: int) -> answers.PortStats:
        """Returns the counters of a PON port."""
        return cast(answers.PortStats, self._ask("debug_pon_stats", port=port))

    def ge_stats(self, uplink: int) -> answers.PortStats:
        """Returns the counters of a GE uplink."""
        return cast(answers.PortStats, self._ask("debug_ge_stats", port=uplink))

    def pon_mac(self, port: int) -> answers.PonMac:
        """Returns the MAC and the MPCP of a PON port."""
        return cast(answers.PonMac, self._ask("debug_pon_mac", port=port))

    def pon_phy(self, port: int) -> answers.PonPhy:
        """Returns the PHY of a PON port."""
        return cast(answers.PonPhy, self._ask("debug_pon_phy", port=port))

    def laser(self, port: int) -> str:
        """Returns the state of a PON port's laser: off, on, or on in spite of TX disable."""
        return cast(answers.PonLaser, self._ask("debug_pon_laser", port=port))["state"]

    def ge_mac(self, uplink: int) -> answers.GeMac:
        """Returns the MAC of a GE uplink."""
        return cast(answers.GeMac, self._ask("debug_ge_mac", port=uplink))

    def ge_phy(self, uplink: int) -> answers.GePhy:
        """Returns the PHY of a GE uplink."""
        return cast(answers.GePhy, self._ask("debug_ge_phy", port=uplink))

    def set_ge_phy(self, uplink: int, *settings: str) -> None:
        """Sets the PHY of a GE uplink: chip.set_ge_phy(1, "auto-negotiation", "full duplex").

        The settings are reset, loopback, auto-negotiation, power down, isolate, restart negotiation and full duplex.
        """
        content = platform_block("ge_phy_control", {"control": list(settings)}, 1)
        self._call(raw.bsp_debug_plat_ge_phy_set, uplink, content[0])

    def xaui_mac(self, interface: int) -> answers.XauiMac:
        """Returns the MAC of a XAUI interface, 1 or 2."""
        return cast(answers.XauiMac, self._ask("debug_xaui_mac", port=interface))

    def xaui_phy(self, interface: int) -> answers.XauiPhy:
        """Returns the PHY of a XAUI interface, 1 or 2."""
        return cast(answers.XauiPhy, self._ask("debug_xaui_phy", port=interface))

    def management(self, port: int = 1) -> answers.MgmtCfg:
        """Returns how the management port is configured."""
        return cast(answers.MgmtCfg, self._ask("debug_mgmt_cfg", port=port))

    def ingress(self, port: int, *, ge: bool = False) -> answers.Ingress:
        """Returns what a PON port, or a GE uplink, does with frames that it receives."""
        return cast(answers.Ingress, self._ask("debug_ingress", port=port, selector=int(ge)))

    def egress(self, port: int, *, ge: bool = False) -> answers.Egress:
        """Returns what a PON port, or a GE uplink, does with frames that it sends."""
        return cast(answers.Egress, self._ask("debug_egress", port=port, selector=int(ge)))

    def set_discovery(self, port: int, *, interval: int, window: int) -> None:
        """Sets when ONUs of a PON port may register.

        Args:
            interval: ms from one discovery window to the next, 100 to 10000; at first 1000.
            window: its length in TQ of 16 ns, 12500 (the round trip of 20 km) to 65535; at first 16384.
        """
        number_in("interval", interval, 100, 10000, "ms")
        number_in("window", window, 12500, 65535, "TQ")
        self._set_mpcp(port, _DISCOVERY, {"discovery_interval": interval, "discovery_window": window})

    def set_timeouts(self, port: int, *, report: int, gate: int) -> None:
        """Sets after which time without a message ONUs of a PON port give up.

        Args:
            report: ms without a REPORT, after which an ONU is deregistered, 50 to 10000; at first 1000.
            gate: ms without a GATE, after which an ONU sends no more, 10 to 1000; at first 50.
        """
        number_in("report", report, 50, 10000, "ms")
        number_in("gate", gate, 10, 1000, "ms")
        self._set_mpcp(port, _TIMEOUTS, {"report_timeout": report, "gate_timeout": gate})

    def set_grants(self, port: int, *, length: int, cycle: int, sync_time: int, fec: bool) -> None:
        """Sets how ONUs of a PON port are granted time.

        Args:
            length: TQ that an ONU with full queues is granted, 64 to 65535; at first 2048.
            cycle: us from one grant of an ONU to the next, 250 to 10000; at first 1000.
            sync_time: TQ that the receiver needs at a grant's start, from 1, less than the length; at first 64.
            fec: whether with forward error correction; at first without.
        """
        number_in("length", length, 64, 65535, "TQ")
        number_in("cycle", cycle, 250, 10000, "us")
        number_in("sync_time", sync_time, 1, length - 1, "TQ")
        self._set_mpcp(port, _GRANTS, {"grant_length": length, "grant_cycle": cycle, "sync_time": sync_time,
                                       "fec": int(fec)})

    def set_llid(self, port: int, llid: int, *, frames: str = "learned", mac_limit: int = 0, broadcast_rate: int = 0,
                 multicast_rate: int = 0, unknown_rate: int = 0, drop_over_limit: bool = False,
                 isolated: bool = False) -> None:
        """Sets the behaviour of an LLID, all of it at once, because the OLT does not tell it.

        Args:
            llid: 1 to 128, which is the ONU id and 1 more.
            frames: learned, where they are forwarded and their source addresses learned; forwarded; or dropped.
            mac_limit: addresses that are learned at most; 0 not limited.
            broadcast_rate: kbit/s of broadcast frames, up to 1000000; 0 not limited.
            multicast_rate: the same of multicast frames.
            unknown_rate: the same of frames to unknown addresses.
            drop_over_limit: whether frames are dropped from addresses that mac_limit keeps from being learned.
            isolated: whether forwarding between ONUs leaves it out.
        """
        if frames not in _BEHAVIOURS:
            raise ValueError(f"frames: {frames!r} is not one of {', '.join(_BEHAVIOURS)}")
        block = platform_block("llid_behavior", {
            "mac_limit": mac_limit, "broadcast_rate": broadcast_rate, "multicast_rate": multicast_rate,
            "unknown_rate": unknown_rate, "over_limit": int(drop_over_limit), "isolated": int(isolated)}, 24)
        self._call(raw.bsp_llid_behavior_set, port, llid, _BEHAVIOURS.index(frames), block)

    def register_again(self, port: int) -> None:
        """Deregisters all ONUs of a PON port, and has them register again."""
        self._call(raw.bsp_8022_deregister_onu_state_register, port)

    def log_onus(self, on: bool, port: int = 0) -> None:
        """Switches lines in the service's log about ONUs that are deregistered and register again, of a PON port, or of
        all for port 0.
        """
        self._call(raw.bsp_debug_onu_debug, int(on), port)

    def log_ctc_oam(self, on: bool, port: int = 0) -> None:
        """Switches lines in the service's log about the extended OAM of ONUs."""
        self._call(raw.bsp_debug_ctc_oam, int(on), port)

    def log_fdb(self, port: int = 0) -> None:
        """Has the service write the forwarding database of a PON port, or of all for port 0, to its log."""
        self._call(raw.bsp_debug_cs8022_get_fdb, 0, port)

    def _ask(self, name: str, **given: int) -> Any:
        return self._call(query(name).ask, given)

    def _set_mpcp(self, port: int, which: int, values: dict[str, Value]) -> None:
        self._call(raw.bsp_debug_8022_mpcp_set, port, which, platform_block("mpcp", values, 32))
