"""Durations as tests write them: "5 s", "15 min", or a number of seconds."""

from __future__ import annotations

import re

_UNITS = {"ms": 1, "s": 1000, "min": 60_000, "h": 3_600_000, "d": 86_400_000}


def milliseconds(duration: str | float) -> int:
    """Returns a duration in milliseconds. Raises ValueError where it is none."""
    if not isinstance(duration, str):
        found = round(duration * 1000)
        if found < 0:
            raise ValueError(f"{duration!r}: time does not go back")
        return found
    match = re.fullmatch(r"\s*(\d+(?:\.\d+)?)\s*(ms|s|min|h|d)\s*", duration)
    if not match:
        raise ValueError(f"{duration!r} is no duration, as 5 s; the units are {', '.join(_UNITS)}")
    return round(float(match[1]) * _UNITS[match[2]])
