"""What the records have in common: memory as C lays it out, and fields in it."""

from __future__ import annotations

from typing import Any, ClassVar, TypeVar

from ._native import ffi

Self = TypeVar("Self", bound="Record")


class Record:
    """A record of the library, whose bytes are those that travel."""

    __slots__ = ("cdata",)
    C_NAME: ClassVar[str]
    SIZE: ClassVar[int]
    cdata: Any

    def __init__(self) -> None:
        self.cdata = ffi.new(self.C_NAME + " *")

    @classmethod
    def from_bytes(cls: type[Self], content: bytes) -> Self:
        """Returns a record of these bytes, with zeros behind them."""
        if len(content) > cls.SIZE:
            raise ValueError(f"{cls.C_NAME} has {cls.SIZE} bytes, not {len(content)}")
        record = cls()
        ffi.memmove(record.cdata, content, len(content))
        return record

    def __bytes__(self) -> bytes:
        content: bytes = ffi.buffer(self.cdata)[:]
        return content

    def __eq__(self, other: object) -> bool:
        return isinstance(other, type(self)) and bytes(self) == bytes(other)

    __hash__ = None  # type: ignore[assignment]  # a record can change

    def __repr__(self) -> str:
        cleared = type(self)()
        names = [name for name in dir(type(self)) if isinstance(getattr(type(self), name), _Field)]
        given = [f"{name}={getattr(self, name)!r}" for name in names if getattr(self, name) != getattr(cleared, name)]
        return f"{self.C_NAME}({', '.join(given)})"


class _Field:
    def __init__(self, name: str, size: int) -> None:
        self.name = name
        self.size = size

    def place(self, record: Record) -> Any:
        """Returns the bytes of the field."""
        return ffi.buffer(getattr(record.cdata, self.name))

    def put(self, record: Record, content: bytes, most: int) -> None:
        if len(content) > most:
            raise ValueError(f"{self.name}: at most {most} bytes fit, not {len(content)}")
        self.place(record)[:] = content.ljust(self.size, b"\0")


class Word(_Field):
    """A number of 32 bits."""

    def __get__(self, record: Any, owner: Any) -> int:
        value: int = self if record is None else getattr(record.cdata, self.name)
        return value

    def __set__(self, record: Record, value: int) -> None:
        setattr(record.cdata, self.name, value)


class Byte(Word):
    """A number of 8 bits."""


class Block(_Field):
    """Bytes. What is shorter than the field is filled up with zeros."""

    def __get__(self, record: Any, owner: Any) -> bytes:
        value: bytes = self if record is None else self.place(record)[:]
        return value

    def __set__(self, record: Record, value: bytes) -> None:
        self.put(record, value, self.size)


class Text(_Field):
    """A text, which ends at a zero byte or with the field."""

    def __get__(self, record: Any, owner: Any) -> str:
        if record is None:
            return self  # type: ignore[return-value]
        content: bytes = self.place(record)[:]
        return content.split(b"\0", 1)[0].decode("utf-8", "surrogateescape")

    def __set__(self, record: Record, value: str) -> None:
        self.put(record, value.encode("utf-8", "surrogateescape"), self.size - 1)
