"""The same for asyncio: calls run in a few threads of their own, because a connection belongs to a thread.

    async with aio.Olt() as olt:
        north, south = await asyncio.gather(olt.onus(1), olt.onus(2))

A task that is cancelled stops waiting. A call of it that has not begun is not made. One that has begun goes on to its
end in its thread, where it takes effect or fails without anybody learning it: ask the OLT how it stands before you try
again. A method that makes several calls, as onu.set_vlan, which reads before it sets, makes all of them. No call lasts
longer than its time-out, so a thread is free again by then.
"""

from __future__ import annotations

import asyncio
import os
from collections.abc import Awaitable, Callable
from types import TracebackType
from typing import TypeVar

from . import _async, olt, rows
from ._async import Chip, Configurations, Fdb, LoopDetection, Modules, Onu, P2p, Profiles, Upgrades
from ._pool import Pool

__all__ = [
    "Chip", "Configurations", "Fdb", "LoopDetection", "Modules", "Olt", "Onu", "P2p", "Pool", "Profiles", "Upgrades",
]

T = TypeVar("T")


class Olt(_async.Olt):
    """An OLT whose methods are awaited. They are those of bsp_pon.Olt, and run in threads of a pool.

    directory, timeout: as those of bsp_pon.Olt.
    of: an OLT that there is already, in the place of both, as the one of a test.
    pool: the threads; without one the OLT has four of its own, which end with it: use it in `async with`, or close it.
    """

    def __init__(self, directory: str | os.PathLike[str] | None = None, timeout: float | None = None, *,
                 of: olt.Olt | None = None, pool: Pool | None = None) -> None:
        self._is_own = pool is None
        super().__init__(pool or Pool(), of or olt.Olt(directory, timeout))

    def onu(self, port: int, onu_id: int) -> Onu:
        """Returns an object for a bound ONU. Nothing is sent."""
        return Onu(self._pool, self._made.onu(port, onu_id))

    async def pause(self, seconds: float) -> None:
        """Lets time pass between two looks at the OLT. Of a simulated one that is model time."""
        if type(self._made).pause is olt.Olt.pause:
            await asyncio.sleep(seconds)
        else:
            await self._pool.run(self._made.pause, seconds)

    async def wait(self, condition: Callable[[], Awaitable[T]], *, timeout: float = 60, interval: float = 0.5) -> T:
        """Looks again and again until a condition is true, and returns what it returned then.

        Raises TimeoutError where it is not true after so many seconds.
        """
        for _ in range(max(1, round(timeout / interval))):
            found = await condition()
            if found:
                return found
            await self.pause(interval)
        found = await condition()
        if not found:
            raise TimeoutError(f"not so within {timeout} s")
        return found

    async def wait_online(self, port: int, onu_id: int, *, timeout: float = 60) -> rows.OnuInfo:
        """Waits until an ONU is online."""
        async def online() -> rows.OnuInfo | None:
            bound = [onu for onu in await self.onus(port) if onu.onu_id == onu_id and onu.state == "online"]
            return bound[0] if bound else None

        try:
            found = await self.wait(online, timeout=timeout)
        except TimeoutError:
            raise TimeoutError(f"ONU {port}/{onu_id} is not online after {timeout} s") from None
        assert found is not None
        return found

    async def close(self) -> None:
        """Waits for calls that have begun, and ends the threads that are its own. Other calls are not made."""
        if self._is_own:
            await self._pool.close()

    async def __aenter__(self) -> Olt:
        return self

    async def __aexit__(self, kind: type[BaseException] | None, error: BaseException | None,
                        trace: TracebackType | None) -> None:
        await self.close()
