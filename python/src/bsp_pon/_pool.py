"""A few threads that make calls, because a connection belongs to a thread."""

from __future__ import annotations

import asyncio
import concurrent.futures
from collections.abc import Callable
from types import TracebackType
from typing import ParamSpec, TypeVar

P = ParamSpec("P")
T = TypeVar("T")


class Pool:
    """A fixed number of threads that make calls, each of which has a connection to an OLT."""

    def __init__(self, threads: int = 4) -> None:
        self._executor = concurrent.futures.ThreadPoolExecutor(threads, thread_name_prefix="bsp_pon")

    async def run(self, function: Callable[P, T], *args: P.args, **kwargs: P.kwargs) -> T:
        """Makes a call, as pool.run(olt.bind, 1, "02:00:5e:10:00:01", onu_id=5), and returns what it returns."""
        begun = self._executor.submit(lambda: function(*args, **kwargs))
        return await asyncio.wrap_future(begun)

    async def close(self) -> None:
        """Waits for calls that have begun, and ends the threads. Calls that have not begun are not made."""
        ending = asyncio.get_running_loop().run_in_executor(
            None, lambda: self._executor.shutdown(wait=True, cancel_futures=True))
        await ending

    async def __aenter__(self) -> Pool:
        return self

    async def __aexit__(self, kind: type[BaseException] | None, error: BaseException | None,
                        trace: TracebackType | None) -> None:
        await self.close()
