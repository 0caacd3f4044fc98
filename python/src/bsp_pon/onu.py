"""A bound ONU of an OLT."""

from __future__ import annotations

from typing import cast

from . import answers, raw, records
from ._caller import text_of
from ._field import Value
from ._onu_methods import OnuMethods
from ._query import query
from ._tables import LAYOUTS
from ._write import platform_record, set_of


class Onu(OnuMethods):
    """The ONU that is bound to an ONU id of a PON port. Most of it can be asked only while it is online.

    There is a method for each question of the catalogue, as get_vlan(uni=1) or wlans(), and one for each setting, as
    set_vlan(uni=1, pvid=100). A setting is sent as a whole: what is not named stays as it is, unless its method says what
    becomes of it.
    """

    def info(self) -> answers.OnuSn:
        """Returns what the ONU says it is: vendor, model, versions."""
        return self.get_sn()

    def optics(self) -> answers.OnuOptics:
        """Returns what its transceiver measures: degC, V, mA, and powers in uW."""
        return self.get_optics()

    def describe(self, text: str) -> None:
        """Describes it in a text of at most 127 bytes, which the OLT keeps. An empty one takes it away."""
        self._call(raw.bsp_pon_onu_description, self.port, self.onu_id, text_of("text", text, 127))

    def reboot(self) -> None:
        """Reboots it. It is offline for a while."""
        self._call(raw.bsp_pon_reboot_onu_batch, set_of("BSP_CMD_ONU_REBOOT_BATCH", self.port, [self.onu_id]))

    def release(self) -> None:
        """Releases its binding."""
        self._call(raw.bsp_pon_no_bind_onu_spec_id, self.port, self.onu_id)

    def deregister(self) -> None:
        """Deregisters it. It registers again at the next discovery window."""
        self._call(raw.bsp_8022_deregister_onu, self.port, self.onu_id)

    def binding(self) -> answers.WhitelistEntry:
        """Returns how it is bound: state, distance, description, LOID."""
        answered = self._call(query("whitelist").ask, {"pon_port": self.port, "onu_id": self.onu_id})
        return cast(answers.WhitelistEntry, answered)

    # Bandwidth

    def sla(self) -> answers.SlaOfOnu:
        """Returns its upstream bandwidth, in kbit/s, with priority and weight."""
        answered = self._call(query("sla").ask, {"pon_port": self.port, "onu_id": self.onu_id})
        return cast(answers.SlaOfOnu, answered)

    def set_sla(self, *, fixed: int | None = None, assured: int | None = None, maximum: int | None = None,
                priority: int | None = None, weight: int | None = None) -> None:
        """Changes its upstream bandwidth, and keeps what is not named: onu.set_sla(maximum=50000).

        Args:
            fixed: kbit/s that are granted whether used or not.
            assured: further kbit/s that are granted when asked for.
            maximum: kbit/s that are never exceeded, 1 to 1000000.
            priority: of what is left, 0 lowest to 7 highest.
            weight: share among those of one priority, 1 to 100.
        """
        named = {"fixed": fixed, "assured": assured, "maximum": maximum, "priority": priority, "weight": weight}
        changed: dict[str, Value] = {name: value for name, value in named.items() if value is not None}
        if not changed:
            raise TypeError(f"nothing to set; the parts of an SLA are {', '.join(named)}")
        platform_record("sla", self.port, self.onu_id, changed)  # a wrong value is refused before anything is asked
        record = platform_record("sla", self.port, self.onu_id, {**cast("dict[str, Value]", self.sla()), **changed})
        self._call(raw.bsp_pon_onu_sla_config, record)

    def clear_sla(self) -> None:
        """Takes its upstream SLA away: the default holds again, which is 1000000 kbit/s at most."""
        self._call(raw.bsp_pon_onu_sla_config, platform_record("sla", self.port, self.onu_id, {}))

    def sla_down(self) -> int:
        """Returns its downstream bandwidth, in kbit/s."""
        answered = self._call(query("sla_down").ask, {"pon_port": self.port, "onu_id": self.onu_id})
        return cast(answers.SlaDownOfOnu, answered)["maximum"]

    def set_sla_down(self, maximum: int) -> None:
        """Sets its downstream bandwidth, in kbit/s up to 1000000. 0 takes it away: the default holds again."""
        record = platform_record("sla_down", self.port, self.onu_id, {"maximum": maximum})
        self._call(raw.bsp_pon_onu_sla_down_config, record)

    # Performance and images

    def monitor(self, on: bool) -> None:
        """Switches the counting of its UNI ports on or off."""
        self._call(raw.bsp_pon_onu_ctc_set_perf_monitor_status, self.port, self.onu_id, 1, int(on))

    def performance(self, uni: int, *, history: bool = False) -> answers.OnuPerformance:
        """Returns the counters of a UNI port in this quarter of an hour, or in the one before."""
        return self.get_perf_history(uni) if history else self.get_perf_current(uni)

    def push_image(self, image: bytes, version: str) -> None:
        """Sends it a software image, in parts. It starts it after a commit and a reboot."""
        if not image:
            raise ValueError("image: there is nothing to send")
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

    def image_state(self) -> answers.OnuImageStatus:
        """Returns how far an image has come."""
        return self.get_image_status()

    def images(self) -> answers.OnuBanks:
        """Returns what its two banks hold."""
        return self.get_banks()
