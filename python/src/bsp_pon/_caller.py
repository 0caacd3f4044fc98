"""How an OLT and its parts make their calls."""

from __future__ import annotations

from collections.abc import Callable
from typing import ParamSpec, TypeVar

from ._reach import reach

P = ParamSpec("P")
T = TypeVar("T")


class Caller:
    """Calls functions of the exact layer where the service has its sockets in a folder, for so many seconds at most."""

    def __init__(self, directory: str | None, timeout: float | None) -> None:
        self.directory = directory
        self.timeout = timeout

    def __call__(self, function: Callable[P, T], *args: P.args, **kwargs: P.kwargs) -> T:
        reach(self.directory, self.timeout)
        return function(*args, **kwargs)
