"""An OLT, as provisioning scripts see it."""

from __future__ import annotations

import os
import time
from collections.abc import Callable, Iterable
from typing import TypeVar, cast

from . import raw, rows
from ._caller import Caller
from ._layout import Values
from ._query import query
from ._row import Row
from ._write import platform_block, pon_record, set_of
from .addresses import mac_bytes, mac_text
from .errors import Unknown
from .onu import Onu
from .profiles import Profiles
from .upgrades import Upgrades

T = TypeVar("T")
AnyRow = TypeVar("AnyRow", bound=Row)

AUTH_MODES = ("mac", "loid", "loid-password", "hybrid")


class Olt:
    """The OLT whose service has its sockets in a folder, or the one that the environment names.

    An object has no connection: each thread that uses one has its own. Every method raises StatusError where the OLT
    refuses, and IpcError where it is not reached.

    directory: the folder of sockets; None for that of BOARD_IPC_DIR, or its default.
    timeout: seconds that a call waits at most; None for BOARD_IPC_TIMEOUT_MS.
    """

    def __init__(self, directory: str | os.PathLike[str] | None = None, timeout: float | None = None) -> None:
        # Calls a function of the exact layer at this OLT: olt.call(raw.bsp_pon_no_bind_onu_all, 3).
        self.call = Caller(None if directory is None else os.fspath(directory), timeout)
        self.profiles = Profiles(self.call)
        self.upgrades = Upgrades(self.call)

    def ask(self, name: str, **given: int) -> Values | list[Row]:
        """Asks anything that the catalogue has a question for, by its name: olt.ask("optics_diag", pon_port=3).

        Returns rows, or values by the names of the catalogue's layouts.
        """
        return self.call(query(name).ask, given)

    def values(self, name: str, **given: int) -> Values:
        """Asks for what is no table."""
        return cast(Values, self.ask(name, **given))

    def table(self, view: type[AnyRow], name: str, **given: int) -> list[AnyRow]:
        """Asks for a table, whose rows are those of a view."""
        answered = self.ask(name, **given)
        return [row for row in answered if isinstance(row, view)]

    # The OLT and its ports

    def info(self) -> rows.BasicInfo:
        """Returns what the OLT is."""
        return self.call(raw.bsp_pon_get_basic_info).rows_of(rows.BasicInfo)[0]

    def ports(self) -> list[rows.PortInfo]:
        """Returns the PON ports."""
        return self.call(raw.bsp_pon_get_port_info).rows_of(rows.PortInfo)

    def port_stats(self, port: int) -> Values:
        """Returns the counters of a PON port."""
        return self.values("debug_pon_stats", port=port)

    def port_optics(self, port: int) -> Values:
        """Returns what the optical module of a PON port measures of itself."""
        return self.values("optics_diag", pon_port=port)

    def port_module(self, port: int) -> list[rows.SfpQuantities]:
        """Returns what the optical module of a PON port measures, with its thresholds."""
        return self.call(raw.bsp_sfp_diag_info_get_json, port).rows_of(rows.SfpQuantities)

    # ONUs

    def onus(self, port: int = 0) -> list[rows.OnuInfo]:
        """Returns the ONUs of a port, or of all for port 0: those that are bound, and those that wait."""
        return self.call(raw.bsp_pon_exec_get_json_, raw.BSP_CMD_VIEW_ONU_INFO_WEB, port, 0).rows_of(rows.OnuInfo)

    def waiting(self, port: int = 0) -> list[rows.OnuInfo]:
        """Returns the ONUs that have arrived and are not bound."""
        return [onu for onu in self.onus(port) if onu.onu_id is None]

    def find(self, mac: str) -> rows.OnuInfo:
        """Returns the ONU with this MAC address. Raises Unknown where no port has it."""
        wanted = mac_text(mac_bytes(mac))
        for onu in self.onus():
            if onu.mac == wanted:
                return onu
        raise Unknown(f"there is no ONU {wanted}")

    def onu(self, port: int, onu_id: int) -> Onu:
        """Returns an object for a bound ONU. Nothing is sent."""
        return Onu(self.call, port, onu_id)

    def bind(self, port: int, mac: str, *, onu_id: int | None = None, texts: tuple[str, ...] = (),
             mode: int = 0) -> int:
        """Binds an ONU, to an ONU id or to one that the OLT picks, with up to three texts. Returns the ONU id."""
        if len(texts) > 3:
            raise ValueError(f"texts: at most 3 are kept, not {len(texts)}")
        first, second, third = [*texts, None, None, None][:3]
        address = mac_bytes(mac)
        if onu_id is not None:
            self.call(raw.bsp_pon_bind_onu_spec_id, port, onu_id, address, first, second, mode, third)
            return onu_id
        self.call(raw.bsp_pon_bind_onu_auto_id, port, address, first, second, mode, third)
        picked = self.find(mac).onu_id
        if picked is None:
            raise Unknown(f"ONU {mac} is not bound any more")
        return picked

    def confirm(self, port: int, mac: str) -> None:
        """Lets an ONU in that waits."""
        self.call(raw.bsp_pon_confirm_onu, port, pon_record(onu_mac=mac_bytes(mac)))

    def release(self, port: int, *, onu_id: int | None = None, mac: str | None = None) -> None:
        """Releases the binding of an ONU, named by its id, its MAC address, or both, which then must fit."""
        if onu_id is not None and mac is not None:
            self.call(raw.bsp_pon_no_bind_onu_spec_id_and_mac, port, onu_id, mac_bytes(mac))
        elif onu_id is not None:
            self.call(raw.bsp_pon_no_bind_onu_spec_id, port, onu_id)
        elif mac is not None:
            self.call(raw.bsp_pon_no_bind_onu_by_mac, port, mac_bytes(mac))
        else:
            raise TypeError("an onu_id or a mac is needed; release_all releases all ONUs of a port")

    def release_all(self, port: int, *, offline_only: bool = False) -> None:
        """Releases the bindings of all ONUs of a port, or of those that are offline."""
        self.call(raw.bsp_pon_no_bind_offline_onu_all if offline_only else raw.bsp_pon_no_bind_onu_all, port)

    def reboot(self, port: int, onu_ids: Iterable[int]) -> None:
        """Reboots ONUs of a port."""
        self.call(raw.bsp_pon_reboot_onu_batch, set_of("BSP_CMD_ONU_REBOOT_BATCH", port, onu_ids))

    def support(self, port: int, mac: str, supported: bool) -> None:
        """Says whether an ONU is supported. One that is not cannot be bound."""
        self.call(raw.bsp_pon_onu_support_set, port, mac_bytes(mac), int(supported))

    # Lists and authentication

    def blacklist(self, port: int = 0) -> list[rows.Blacklist]:
        """Returns the ONUs that are let in by nothing, of a port, or of all for port 0."""
        return self.call(raw.bsp_pon_get_onu_blacklist_web, pon_record(pon_port=port)).rows_of(rows.Blacklist)

    def reject(self, port: int, *, onu_id: int | None = None, mac: str | None = None, text: str | None = None) -> None:
        """Puts an ONU on the blacklist: one that is bound by its id, or any by its MAC address and with a text."""
        if (onu_id is None) == (mac is None):
            raise TypeError("either an onu_id or a mac is needed")
        if mac is not None:
            self.call(raw.bsp_pon_blacklist_add_onu_auto_id, port, mac_bytes(mac), text)
        elif onu_id is not None:
            self.call(raw.bsp_pon_reject_onu_to_blacklist, port, onu_id)

    def allow(self, port: int, mac: str) -> None:
        """Takes an ONU off the blacklist."""
        self.call(raw.bsp_pon_no_bind_blacklist_onu_by_mac, port, mac_bytes(mac))

    def auth_mode(self, port: int) -> str:
        """Returns how the ONUs of a port prove who they are: mac, loid, loid-password or hybrid."""
        number = self.values("auth", pon_port=port)["mode"]
        return AUTH_MODES[number] if isinstance(number, int) and number < len(AUTH_MODES) else str(number)

    def set_auth_mode(self, port: int, mode: str) -> None:
        """Sets how the ONUs of a port prove who they are."""
        if mode not in AUTH_MODES:
            raise ValueError(f"mode: {mode!r} is not one of {', '.join(AUTH_MODES)}")
        self.call(raw.bsp_pon_onu_auth_mode_type_set, port, None, None, AUTH_MODES.index(mode))

    def loids(self, port: int) -> list[rows.Loids]:
        """Returns the LOIDs of a port."""
        return self.call(raw.bsp_pon_get_onu_loidlist, port).rows_of(rows.Loids)

    def add_loid(self, port: int, loid: str, password: str = "") -> None:
        """Adds a LOID to a port."""
        self.call(raw.bsp_pon_onu_ctc_add_loid, pon_record(pon_port=port, text45=loid, text109=password))

    def delete_loid(self, port: int, loid: str) -> None:
        """Deletes a LOID of a port."""
        self.call(raw.bsp_pon_onu_ctc_delete_loid, pon_record(pon_port=port, text45=loid))

    # Alarms

    def alarms(self, port: int = 0, *, active: bool = False) -> list[rows.OnuAlarm]:
        """Returns the alarms of a port and its ONUs, or of all for port 0."""
        found = self.call(raw.bsp_pon_get_onu_alarm, pon_record(pon_port=port)).rows_of(rows.OnuAlarm)
        return [alarm for alarm in found if not active or alarm.state == "active"]

    def clear_alarms(self, port: int = 0, onu_id: int = 0) -> None:
        """Clears alarms. One whose cause is still there comes back."""
        self.call(raw.bsp_pon_clear_onu_alarm, pon_record(pon_port=port, onu_id=onu_id))

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

    def loops(self) -> list[rows.LoopInfo]:
        """Returns the ports at which there is, or was, a loop."""
        return self.call(raw.bsp_pon_get_loop_detect_info).rows_of(rows.LoopInfo)

    def flush_macs(self, **filter: int | str) -> None:
        """Forgets learned addresses, all of them or those that the fields of the layout fdb_flush name."""
        self.call(raw.bsp_pon_plat_fdb_flush, platform_block("fdb_flush", filter, 16))

    # Waiting

    def pause(self, seconds: float) -> None:
        """Lets time pass between two looks at the OLT."""
        time.sleep(seconds)

    def wait(self, condition: Callable[[], T], *, timeout: float = 60, interval: float = 0.5) -> T:
        """Looks again and again until a condition is true, and returns what it returned then.

        Raises TimeoutError where it is not true after so many seconds.
        """
        for _ in range(max(1, round(timeout / interval))):
            found = condition()
            if found:
                return found
            self.pause(interval)
        found = condition()
        if not found:
            raise TimeoutError(f"not so within {timeout} s")
        return found

    def wait_online(self, port: int, onu_id: int, *, timeout: float = 60) -> rows.OnuInfo:
        """Waits until an ONU is online."""
        def online() -> rows.OnuInfo | None:
            bound = [onu for onu in self.onus(port) if onu.onu_id == onu_id and onu.state == "online"]
            return bound[0] if bound else None

        found = self.wait(online, timeout=timeout)
        assert found is not None
        return found
