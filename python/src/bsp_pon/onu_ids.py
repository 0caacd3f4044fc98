"""Sets of ONU ids, and the three functions that tell what is in them."""

from __future__ import annotations

from typing import Any, Iterable, Iterator

from ._native import ffi, lib

MAX_ONU_ID = 127
_TEXT_SIZE = 402


class onu_id_set:
    """A set of ONU ids from 0 to 127."""

    __slots__ = ("cdata",)
    cdata: Any

    def __init__(self, ids: Iterable[int] = ()) -> None:
        self.cdata = ffi.new("onu_id_set *")
        for onu_id in ids:
            if not 0 <= onu_id <= MAX_ONU_ID:
                raise ValueError(f"an ONU id is a number from 0 to {MAX_ONU_ID}, not {onu_id}")
            self.cdata.words[onu_id // 32] |= 1 << onu_id % 32

    @classmethod
    def from_bytes(cls, content: bytes) -> onu_id_set:
        """Returns the set of 16 bytes, as a record has them."""
        if len(content) != 16:
            raise ValueError(f"a set of ONU ids has 16 bytes, not {len(content)}")
        made = cls()
        ffi.memmove(made.cdata, content, 16)
        return made

    def __bytes__(self) -> bytes:
        content: bytes = ffi.buffer(self.cdata)[:]
        return content

    def __contains__(self, onu_id: object) -> bool:
        return isinstance(onu_id, int) and onu_id in list(self)

    def __iter__(self) -> Iterator[int]:
        return (each for each in range(MAX_ONU_ID + 1) if self.cdata.words[each // 32] >> each % 32 & 1)

    def __len__(self) -> int:
        return sum(1 for _ in self)

    def __repr__(self) -> str:
        return f"onu_id_set({list(self)})"


def ont_id_res_exists_ont(set: onu_id_set) -> int:
    """Tells whether a set of ONU ids has members. Makes no request.

    Args:
        set: the set.

    Returns:
        1 if any id is a member, else 0.
    """
    found: int = lib.ont_id_res_exists_ont(set.cdata)
    return found


def ont_id_res_str(set: onu_id_set, last_id: int) -> str:
    """Prints a set of ONU ids as ranges, such as 1-5,7,9-12. Makes no request.

    A word of 32 ids without members does not end a run, and a run that is still open at the end is not closed. Where
    every id must be known, ont_id_res_str_expand is the one to use.

    Args:
        set: the set.
        last_id: the id at which the length of an open run is printed; one that is no member for none, as 128.

    Returns:
        The text, which is empty for an empty set.
    """
    place = ffi.new("char[]", _TEXT_SIZE)
    lib.ont_id_res_str(set.cdata, last_id, place)
    text: str = ffi.string(place).decode()
    return text


def ont_id_res_str_expand(set: onu_id_set, spare: int) -> str:
    """Prints a set of ONU ids as a list of all members in ascending order, such as 1,2,3,7. Makes no request.

    Args:
        set: the set.
        spare: ignored.

    Returns:
        The text, which is empty for an empty set.
    """
    place = ffi.new("char[]", _TEXT_SIZE)
    lib.ont_id_res_str_expand(set.cdata, spare, place)
    text: str = ffi.string(place).decode()
    return text
