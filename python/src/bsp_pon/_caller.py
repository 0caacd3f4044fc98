"""How an OLT and its parts make their calls."""

from __future__ import annotations

import inspect
import os
from collections.abc import Callable
from typing import Any, ParamSpec, TypeVar

from ._reach import reach
from .errors import IpcError

P = ParamSpec("P")
T = TypeVar("T")

_NOBODY = -1  # of the IPC library: there is no service
_MOST = (1 << 32) - 1


class Caller:
    """Calls functions of the exact layer where the service has its sockets in a folder, for so many seconds at most."""

    def __init__(self, directory: str | None, timeout: float | None) -> None:
        self.directory = directory
        self._timeout: float | None = None
        self.timeout = timeout

    @property
    def timeout(self) -> float | None:
        """Seconds that a call waits at most; None for BOARD_IPC_TIMEOUT_MS."""
        return self._timeout

    @timeout.setter
    def timeout(self, seconds: float | None) -> None:
        if seconds is not None and not isinstance(seconds, (int, float)):
            raise TypeError(f"timeout: a number of seconds is needed, not {seconds!r}")
        if seconds is not None and not 0 < seconds < 4e6:
            raise ValueError(f"timeout: {seconds!r} is not a number of seconds above 0")
        self._timeout = seconds

    def __call__(self, function: Callable[P, T], *args: P.args, **kwargs: P.kwargs) -> T:
        reach(self.directory, self._timeout)
        try:
            return function(*args, **kwargs)
        except IpcError as error:
            if error.number == _NOBODY:
                folder = self.directory or os.environ.get("BOARD_IPC_DIR") or "the default folder"
                error.where = f"; looked in {folder}, and Olt(directory) or BOARD_IPC_DIR names another one"
            raise
        except (TypeError, OverflowError) as error:
            raise explained(error, function, args, kwargs) from None


def explained(error: Exception, function: Callable[..., object], args: tuple[Any, ...],
              kwargs: dict[str, Any]) -> Exception:
    """Returns an exception that names the argument which C does not take, or the same where none is found."""
    try:
        signature = inspect.signature(function)
        given = signature.bind(*args, **kwargs).arguments
    except (TypeError, ValueError):
        return error
    for name, value in given.items():
        wanted = signature.parameters[name].annotation
        if wanted == "int" and not isinstance(value, int):
            return TypeError(f"{name}: a number is needed, not {value!r}")
        if wanted == "int" and not 0 <= value <= _MOST:
            return OverflowError(f"{name}: {value} is not a number from 0 to {_MOST}")
    return error


def number_in(name: str, value: float, least: float, most: float, unit: str = "") -> None:
    """Raises ValueError where a number is not one that a service takes."""
    if not isinstance(value, (int, float)):
        raise TypeError(f"{name}: a number is needed, not {value!r}")
    if not least <= value <= most:
        raise ValueError(f"{name}: {value} is not a number from {least} to {most}{unit and ' '}{unit}")


def text_of(name: str, value: str, most: int) -> str:
    """Returns a text. Raises ValueError where it is longer than the OLT keeps, in bytes of UTF-8."""
    if not isinstance(value, str):
        raise TypeError(f"{name}: a text is needed, not {value!r}")
    length = len(value.encode("utf-8", "surrogateescape"))
    if length > most:
        raise ValueError(f"{name}: at most {most} bytes of UTF-8 are kept, not {length}")
    return value
