"""The optical modules of an OLT: what they are, what they measure, and what can be set there."""

from __future__ import annotations

from typing import cast

from .. import answers, raw, rows
from .._caller import Caller, number_in
from .._query import query
from .._tables import LAYOUTS
from .._write import platform_block

_MEMORY = 144  # bytes of a request to a module's memory
_START = 124  # of it, in the record


class Modules:
    """The modules in the SFP cages. PON port N has cage N; behind those are the cages of the GE uplinks."""

    def __init__(self, call: Caller) -> None:
        self._call = call

    def diagnostics(self, port: int) -> answers.OpticsDiagnostics:
        """Returns what the module of a PON port measures of itself, in degC, V, mA and dBm, with its alarms."""
        return cast(answers.OpticsDiagnostics, self._call(query("optics_diag").ask, {"pon_port": port}))

    def info(self, cage: int) -> answers.SfpInfo:
        """Returns what the module in a cage is and measures, with its thresholds and its memory."""
        return cast(answers.SfpInfo, self._call(query("sfp_info").ask, {"port": cage}))

    def quantities(self, cage: int) -> list[rows.SfpQuantities]:
        """Returns what the module in a cage measures, a row for each quantity with its thresholds."""
        return self._call(raw.bsp_sfp_diag_info_get_json, cage).rows_of(rows.SfpQuantities)

    def rssi(self, port: int, onu_id: int, *, measured: bool = False) -> answers.OpticsRssi:
        """Returns the power that a PON port receives from an ONU, in dBm: now, or as `measure` found it last."""
        given = {"pon_port": port, "id": onu_id, "sel": int(measured)}
        return cast(answers.OpticsRssi, self._call(query("optics_rssi").ask, given))

    def measure(self, port: int, onu_id: int, *, samples: int = 1, interval: int = 0, delay: int = 0) -> None:
        """Has the module of a PON port measure the power that it receives from an ONU. `rssi` has the result later.

        Args:
            samples: how many to take, up to 100.
            interval: ms between two samples, up to 60000.
            delay: ms before the first, up to 3600000.
        """
        number_in("samples", samples, 1, 100)
        number_in("interval", interval, 0, 60000, "ms")
        number_in("delay", delay, 0, 3600000, "ms")
        block = platform_block("opm_trigger", {"samples": samples, "interval": interval, "delay": delay}, 12)
        self._call(raw.bsp_om_opm_trigger_set, port, onu_id, block)

    def cancel_measurement(self, port: int) -> None:
        """Cancels the measurement that is under way at a PON port."""
        self._call(raw.bsp_om_opm_cancel_set, port)

    def set_laser_always_on(self, port: int, on: bool) -> None:
        """Has the laser of a PON port stay on in spite of TX disable (LAO mode), or obey it."""
        self._call(raw.bsp_om_lao_mode_set, port, int(on), bytes(12))

    def set_light_loss_level(self, port: int, level: float | None) -> None:
        """Sets below which received power light counts as lost at a PON port (LOL mode).

        Args:
            level: dBm, -40 to 0; None for the module's own low alarm threshold.
        """
        if level is not None:
            number_in("level", level, -40, 0, "dBm")
        block = platform_block("lol_mode", {} if level is None else {"level": level}, 8)
        self._call(raw.bsp_om_lol_mode_set, port, 0, int(level is not None), block)

    def read_memory(self, cage: int, address: int, offset: int, length: int) -> bytes:
        """Returns bytes of a module's memory, in the layout of SFF-8472.

        Args:
            address: 0xa0 for what it is, 0xa2 for what it measures.
            offset: the first byte.
            length: how many, 1 to 128, not beyond byte 255.
        """
        number_in("length", length, 1, 128)
        asked = platform_block("i2c_read", {"address": address, "offset": offset, "length": length}, _MEMORY)
        answered = LAYOUTS["i2c_bytes"].read(self._call(raw.bsp_debug_8022_i2c_read, cage, asked), _START)
        found = cast(answers.I2cBytes, answered)
        return found["data"][:found["result"]]

    def write_memory(self, cage: int, address: int, offset: int, content: bytes) -> None:
        """Writes bytes of a module's memory: of address 0xa2 byte 110 and bytes 128 to 247. Bit 6 of byte 110 switches
        the laser off, and with it the port's ONUs.
        """
        block = platform_block("i2c_write", {
            "address": address, "offset": offset, "length": len(content), "data": content}, _MEMORY)
        self._call(raw.bsp_debug_8022_i2c_write, cage, 0, block)
