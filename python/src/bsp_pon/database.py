"""What the library hands out and wants back: result databases, and blocks of the board's memory."""

from __future__ import annotations

import json
from types import TracebackType
from typing import Any, TypeVar

from ._native import ffi, lib
from ._row import Row
from .errors import AnswerError

AnyRow = TypeVar("AnyRow", bound=Row)
Self = TypeVar("Self", bound="_Owned")


class _Owned:
    """Something that is released once: by close(), at the end of a with block, or by the garbage collector."""

    __slots__ = ("_cdata",)

    def __init__(self, cdata: Any, release: Any) -> None:
        self._cdata = ffi.gc(cdata, release) if cdata else None

    def close(self) -> None:
        """Releases it. Closing it again does nothing."""
        if self._cdata is not None:
            ffi.release(self._cdata)
            self._cdata = None

    def __enter__(self: Self) -> Self:
        return self

    def __exit__(self, kind: type[BaseException] | None, error: BaseException | None,
                 trace: TracebackType | None) -> None:
        self.close()

    def __bool__(self) -> bool:
        """Whether there is something, and it is not released."""
        return self._cdata is not None


class Database(_Owned):
    """A result database. One that the service left none of, or that is closed, reads as an empty text without rows."""

    __slots__ = ()

    def text(self) -> str:
        """Returns the document as it came, which is JSON."""
        if self._cdata is None:
            return ""
        length = ffi.new("uint32_t *")
        content = lib.db_text(self._cdata, length)
        text: str = ffi.buffer(content, length[0])[:].decode("utf-8", "surrogateescape")
        return text

    def rows(self) -> list[dict[str, object]]:
        """Returns the rows, each of which has its columns by their names. An object is a table of one row."""
        text = self.text()
        if not text.strip():
            return []
        try:
            document = json.loads(text)
        except (ValueError, RecursionError) as error:
            raise AnswerError(f"a result database is no JSON: {error}") from None
        rows = [document] if isinstance(document, dict) else document
        if not isinstance(rows, list) or not all(isinstance(row, dict) for row in rows):
            raise AnswerError("a result database is no table")
        return rows

    def rows_of(self, view: type[AnyRow]) -> list[AnyRow]:
        """Returns the rows as those of a view, and closes the database.

        Raises AnswerError where there is none, which is no empty table: the service left no result, or one that is
        larger than the operation takes.
        """
        with self:
            if not self.text():
                raise AnswerError(f"{view.VIEW}: the service left no result, or one that is too large")
            return [view.read(row) for row in self.rows()]


class Memory(_Owned):
    """A block of the board's memory, whose length the operation delivers beside it."""

    __slots__ = ()

    def read(self, length: int) -> bytes:
        """Returns the first bytes of the block. The library does not know how many there are: the caller does."""
        if self._cdata is None:
            return b""
        content: bytes = ffi.buffer(self._cdata, length)[:]
        return content


def database(place: Any) -> Database:
    """Returns what a C function stored a handle of."""
    return Database(place[0], lib.db_free)


def memory(place: Any) -> Memory:
    """Returns what a C function stored the address of."""
    return Memory(place[0], lib.pfree)
