"""An OLT, as provisioning scripts see it."""

from __future__ import annotations

import time
from collections.abc import Callable, Iterable
from typing import TypeVar, cast

from . import answers, raw, rows
from ._caller import number_in, text_of
from ._olt_base import OltBase
from ._tables import LAYOUTS
from ._write import pon_record, request_record, set_of
from .addresses import mac_bytes, mac_text
from .errors import StatusError, Unknown
from .onu import Onu

T = TypeVar("T")

_TEXTS = (127, 63, 63)  # bytes of each text of a binding
AUTH_MODES = ("mac", "loid", "loid-password", "hybrid")


class Olt(OltBase):
    """The OLT whose service has its sockets in a folder, or the one that the environment names.

    An object has no connection: each thread that uses one has its own. Every method raises StatusError where the OLT
    refuses, and IpcError where it is not reached.

    config: the configuration that the OLT has, and how it gets another one.
    profiles, upgrades: profiles of lines, bandwidth, alarms and UNI ports; which software ONUs get.
    fdb, p2p, loop_detection: learned addresses; forwarding between ONUs; loops behind ONUs.
    modules, chip: optical modules; the PON chip and its interfaces.

    directory: the folder of sockets; None for that of BOARD_IPC_DIR, or its default.
    timeout: seconds that a call waits at most; None for BOARD_IPC_TIMEOUT_MS.
    """

    # The OLT and its ports

    def info(self) -> rows.BasicInfo:
        """Returns what the OLT is."""
        return self.call(raw.bsp_pon_get_basic_info).rows_of(rows.BasicInfo)[0]

    def ports(self) -> list[rows.PortInfo]:
        """Returns the PON ports."""
        return self.call(raw.bsp_pon_get_port_info).rows_of(rows.PortInfo)

    def port_summary(self, port: int = 0) -> list[rows.BaseInfo]:
        """Returns how many ONUs a port has, and how far away they are, or of each port for port 0."""
        return self.call(raw.bsp_pon_get_base_info_web, pon_record(pon_port=port)).rows_of(rows.BaseInfo)

    def summary(self) -> str:
        """Returns how many ONUs there are, as a text: a line for each port, and one for the OLT."""
        return self.call(raw.bsp_pon_get_allonuinfo)

    def set_range(self, port: int, nearest: int, farthest: int) -> None:
        """Sets the distances, in m up to 20000, between which ONUs of a port are ranged. Those outside do not wait, and
        go offline where they are bound.
        """
        number_in("farthest", farthest, 0, 20000, "m")
        number_in("nearest", nearest, 0, farthest, "m")
        self.call(raw.bsp_pon_set_opt_range, request_record(
            "BSP_CMD_OPT_RANGE_SET", port, {"min_distance": nearest, "max_distance": farthest}))

    def set_oui(self, oui: str) -> None:
        """Sets the OUI that ONUs are known by, as 11:22:33."""
        self.call(raw.bsp_pon_onu_ctc_set_oui, _oui_bytes(oui))

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
        """Binds an ONU, to an ONU id or to one that the OLT picks. Returns the ONU id.

        Args:
            mac: its MAC address. An ONU that is not there yet is bound, too, and comes online when it is.
            onu_id: 0 to 127.
            texts: up to three, of 127, 63 and 63 bytes, which the OLT keeps.
            mode: a number, which the OLT keeps.
        """
        if isinstance(texts, str) or len(texts) > len(_TEXTS):
            raise ValueError(f"texts: up to {len(_TEXTS)} texts are needed, not {texts!r}")
        kept = [text_of("texts", text, most) for text, most in zip(texts, _TEXTS)]
        first, second, third = [*kept, None, None, None][:3]
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
        """Lets an ONU in: one that waits is bound to the next free id, and one that is unauthenticated goes online."""
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

    def release_some(self, port: int, onu_ids: Iterable[int]) -> None:
        """Releases the bindings of ONUs of a port: all of them or, where one is not bound, none."""
        self.call(raw.bsp_pon_no_bind_onu_batch_spec_id, set_of("BSP_CMD_ONU_RELEASE_BATCH", port, onu_ids))

    def sort_ids(self, port: int, onu_ids: Iterable[int]) -> None:
        """Deals ONU ids of a port out again, so that MAC addresses ascend with them. Those that are not bound stay so.
        """
        self.call(raw.bsp_pon_onu_batch_sort, set_of("BSP_CMD_ONU_SORT_BATCH", port, onu_ids))

    def reboot(self, port: int, onu_ids: Iterable[int]) -> None:
        """Reboots ONUs of a port: all of them or, where one is not online, none."""
        self.call(raw.bsp_pon_reboot_onu_batch, set_of("BSP_CMD_ONU_REBOOT_BATCH", port, onu_ids))

    def binding(self, port: int, mac: str) -> answers.WhitelistEntry:
        """Returns how an ONU of a port is bound: state, distance, description, LOID. Raises StatusError
        PON_ERR_NOT_BOUND where it is not.
        """
        record = self.call(raw.bsp_pon_get_w_onu_by_mac, port, mac_bytes(mac))
        return cast(answers.WhitelistEntry, LAYOUTS["whitelist_entry"].read(bytes(record)))

    def used_ids(self, port: int) -> list[int]:
        """Returns the ONU ids of a port that are in use."""
        return cast(answers.IdUsage, self.values("whitelist_ids", pon_port=port))["id_set"]

    def apply_onu_configs(self) -> None:
        """Has the OLT send the configuration of ONUs again."""
        self.call(raw.bsp_pon_onucfg_set_batch, 0)

    def support(self, port: int, mac: str, supported: bool) -> None:
        """Says whether an ONU is supported. One that is not cannot be bound."""
        self.call(raw.bsp_pon_onu_support_set, port, mac_bytes(mac), int(supported))

    # Lists and authentication

    def blacklist(self, port: int = 0) -> list[rows.Blacklist]:
        """Returns the ONUs that are let in by nothing, of a port, or of all for port 0."""
        return self.call(raw.bsp_pon_get_onu_blacklist_web, pon_record(pon_port=port)).rows_of(rows.Blacklist)

    def blacklist_ids(self, port: int) -> list[int]:
        """Returns the ids on the blacklist of a port that are in use."""
        return cast(answers.IdUsage, self.values("blacklist_ids", pon_port=port))["id_set"]

    def blacklisted(self, port: int, mac: str) -> rows.Blacklist | None:
        """Returns the entry of an ONU on the blacklist of a port, or None where it is not there."""
        try:
            return self.call(raw.bsp_pon_get_b_onu_by_mac, port, mac_bytes(mac)).rows_of(rows.Blacklist)[0]
        except StatusError as error:
            if error.number != raw.PON_ERR_NOT_LISTED:
                raise
            return None

    def reject(self, port: int, *, onu_id: int | None = None, mac: str | None = None, text: str | None = None) -> None:
        """Puts an ONU on the blacklist: one that is bound by its id, or any by its MAC address, with a text of at most
        200 bytes.
        """
        if (onu_id is None) == (mac is None):
            raise TypeError("either an onu_id or a mac is needed")
        if text is not None:
            text_of("text", text, 200)
        if mac is not None:
            self.call(raw.bsp_pon_blacklist_add_onu_auto_id, port, mac_bytes(mac), text)
        elif onu_id is not None:
            self.call(raw.bsp_pon_reject_onu_to_blacklist, port, onu_id)

    def allow(self, port: int, mac: str) -> None:
        """Takes an ONU off the blacklist."""
        self.call(raw.bsp_pon_no_bind_blacklist_onu_by_mac, port, mac_bytes(mac))

    def reject_some(self, port: int, onu_ids: Iterable[int]) -> None:
        """Puts bound ONUs of a port on the blacklist: all of them or, where one does not fit there, none."""
        self.call(raw.bsp_pon_reject_onu_to_blacklist_batch, set_of("BSP_CMD_BLACKLIST_REJECT_BATCH", port, onu_ids))

    def allow_some(self, port: int, ids: Iterable[int]) -> None:
        """Takes ONUs off the blacklist, by their ids there: all of them or, where one has no entry, none."""
        self.call(raw.bsp_pon_no_bind_blacklist_batch,
                  request_record("BSP_CMD_BLACKLIST_REMOVE_BATCH", port, {"id_set": list(ids)}))

    def auth(self) -> list[rows.Auth]:
        """Returns how authentication stands at each port: the mode, and how many records, admitted ONUs, and so on."""
        return self.call(raw.bsp_pon_onu_auth_infolist_get).rows_of(rows.Auth)

    def auth_state(self, port: int) -> answers.AuthCounts:
        """Returns how the ONUs of a port prove who they are, and how many are admitted, turned away, and so on."""
        return cast(answers.AuthCounts, self.values("auth", pon_port=port))

    def auth_mode(self, port: int) -> str:
        """Returns how the ONUs of a port prove who they are: mac, loid, loid-password or hybrid."""
        return self.auth_state(port)["mode"]

    def set_auth_mode(self, port: int, mode: str) -> None:
        """Sets how the ONUs of a port prove who they are: mac, loid, loid-password or hybrid. Those on the fibre
        register again.
        """
        if mode not in AUTH_MODES:
            raise ValueError(f"mode: {mode!r} is not one of {', '.join(AUTH_MODES)}")
        self.call(raw.bsp_pon_onu_auth_mode_type_set, port, None, None, AUTH_MODES.index(mode))

    def loids(self, port: int) -> list[rows.Loids]:
        """Returns the LOIDs of a port."""
        return self.call(raw.bsp_pon_get_onu_loidlist, port).rows_of(rows.Loids)

    def add_loid(self, port: int, loid: str, password: str = "") -> None:
        """Adds a LOID to a port, with up to 24 characters, and up to 12 of its password."""
        text_of("loid", loid, 24)
        text_of("password", password, 12)
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

        try:
            found = self.wait(online, timeout=timeout)
        except TimeoutError:
            raise TimeoutError(f"ONU {port}/{onu_id} is not online after {timeout} s") from None
        assert found is not None
        return found


def _oui_bytes(oui: str) -> bytes:
    try:
        content = bytes.fromhex("".join(each for each in oui if each not in ":-."))
    except ValueError:
        content = b""
    if len(content) != 3:
        raise ValueError(f"{oui!r} is no OUI, as 11:22:33")
    return content
