"""Loop detection: which UNI ports have a loop behind them, and what becomes of those."""

from __future__ import annotations

from typing import cast

from .. import answers, raw, rows
from .._caller import Caller, number_in
from .._query import query

_MODES = ("automatic", "manual")


class LoopDetection:
    """What the OLT does about loops behind ONUs."""

    def __init__(self, call: Caller) -> None:
        self._call = call

    def found(self) -> list[rows.LoopInfo]:
        """Returns the UNI ports at which there is, or was, a loop."""
        return self._call(raw.bsp_pon_get_loop_detect_info).rows_of(rows.LoopInfo)

    def config(self) -> answers.LoopConfig:
        """Returns how loops are detected, and how many there were."""
        return cast(answers.LoopConfig, self._call(query("loop_config").ask, {}))

    def switch(self, on: bool) -> None:
        """Switches detection on or off."""
        self._call(raw.bsp_pon_loop_detect_status, int(on))

    def configure(self, *, recovery: str | None = None, recovery_time: int | None = None,
                  interval: int | None = None) -> None:
        """Changes how loops are detected, each by a call of its own, and keeps what is not named.

        Args:
            recovery: how ports that a loop shut recover: automatic, after the recovery time, or manual.
            recovery_time: seconds, 10 to 86400.
            interval: seconds between detection packets, 1 to 600.
        """
        if recovery is not None and recovery not in _MODES:
            raise ValueError(f"recovery: {recovery!r} is not one of {', '.join(_MODES)}")
        if recovery_time is not None:
            number_in("recovery_time", recovery_time, 10, 86400, "s")
        if interval is not None:
            number_in("interval", interval, 1, 600, "s")
        if recovery is not None:
            self._call(raw.bsp_pon_loop_detect_recover_mode, _MODES.index(recovery))
        if recovery_time is not None:
            self._call(raw.bsp_pon_loop_detect_recover_time, recovery_time)
        if interval is not None:
            self._call(raw.bsp_pon_loop_detect_pkt_send_interval, interval)

    def recover(self) -> None:
        """Recovers the ports that a loop shut, now."""
        self._call(raw.bsp_pon_loop_detect_recover_manual)
