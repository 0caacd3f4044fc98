"""Which service the calling thread reaches, and how long it waits for an answer."""

from __future__ import annotations

import os
import threading

from ._native import ffi, lib


class _Reached(threading.local):
    directory: str | None = None
    milliseconds: int = 0


_reached = _Reached()


def reach(directory: str | None, timeout: float | None) -> None:
    """Makes later calls of this thread go to the service in a folder, or to the one that all threads use.

    A change ends the connection that the thread has, so nothing is done where there is none.
    """
    if directory != _reached.directory:
        lib.board_ipc_use_thread_directory(ffi.NULL if directory is None else os.fsencode(directory))
        _reached.directory = directory
    milliseconds = 0 if timeout is None else max(1, round(timeout * 1000))
    if milliseconds != _reached.milliseconds:
        lib.board_ipc_use_thread_timeout(milliseconds)
        _reached.milliseconds = milliseconds
