"""What every function of the exact layer is made of: arguments on their way to C, results on their way back."""

from __future__ import annotations

from typing import Any, TypeAlias

from ._native import ffi, lib
from .errors import BspError, IpcError, StatusError

Bytes: TypeAlias = bytes | bytearray | memoryview

NULL: Any = ffi.NULL
new: Any = ffi.new
buffer: Any = ffi.buffer

# What the library logs is told by exceptions. It is also written where the environment asks for it with BOARD_LOG.
lib.board_log_default(b"off")


def failure(done: int, operation: str, outputs: object) -> BspError:
    """Returns the exception for an outcome that is not 0: the status word, with the IPC result above it."""
    result = done >> 32
    if result == 0:
        return StatusError(done, operation, outputs)
    if result >= 0x80000000:
        result -= 0x100000000
    return IpcError(result, ffi.string(lib.ipc_strerror(result)).decode(), operation)


def text(value: str, name: str) -> bytes:
    """Returns a text as C has it. Bytes that are no UTF-8 are given as they come out of `text_of`."""
    if not isinstance(value, str):
        raise TypeError(f"{name}: a text is needed, not {value!r}")
    encoded = value.encode("utf-8", "surrogateescape")
    if b"\0" in encoded:
        raise ValueError(f"{name}: a text ends at a zero byte, so it cannot hold one")
    return encoded


def optional_text(value: str | None, name: str) -> Any:
    return NULL if value is None else text(value, name)


def block(value: Bytes, size: int | None, name: str) -> bytes:
    """Returns a block of bytes. Where it always has the same size, any other is refused."""
    if size is not None and len(value) != size:
        raise ValueError(f"{name}: {size} bytes are needed, not {len(value)}")
    return bytes(value)


def optional_block(value: Bytes | None, size: int | None, name: str) -> Any:
    return NULL if value is None else block(value, size, name)


def copied(value: Bytes | None, size: int | None, name: str) -> Any:
    """Returns a copy that C may overwrite, or null."""
    if value is None:
        return NULL
    content = block(value, size, name)
    place = new("uint8_t[]", max(len(content), 1))
    ffi.memmove(place, content, len(content))
    return place


def text_of(place: Any) -> str:
    decoded: str = ffi.string(place).decode("utf-8", "surrogateescape")
    return decoded
