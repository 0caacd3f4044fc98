"""One field of a layout: what its bytes mean, and which values it takes."""

from __future__ import annotations

import dataclasses
import ipaddress
import sys
from typing import TypeAlias, Union

from .addresses import mac_bytes, mac_text

# A number, a name of one, names of flags, an address or a text, bytes, or the values of a repeated field.
Value: TypeAlias = Union[int, float, str, bytes, None, list["Value"]]

_SIGNED = ("s16", "s32")
_NUMBERS = ("u8", "u16", "u32", "u64", *_SIGNED)


@dataclasses.dataclass(frozen=True)
class Field:
    name: str
    type: str
    offset: int
    size: int
    brief: str = ""
    unit: str = ""
    scale: float = 1
    values: dict[str, int] = dataclasses.field(default_factory=dict)
    flags: dict[str, int] = dataclasses.field(default_factory=dict)
    range: tuple[int, ...] = ()
    condition: str = ""
    where: tuple[str, ...] = ()
    times: int = 0
    every: int = 0
    counter: str = ""
    whole: str = ""
    part: int = 0
    decider: str = ""
    forms: dict[str, str] = dataclasses.field(default_factory=dict)
    secret: bool = False

    @property
    def end(self) -> int:
        return self.offset + max(self.times - 1, 0) * self.every + self.size

    def part_of(self, place: int) -> slice:
        """Returns where the field is in the record. One that is repeated is at several places, from 0 on."""
        start = self.offset + place * self.every
        return slice(start, start + self.size)

    def names(self) -> list[str]:
        """Returns the names that a value may be given by: that of the field, and those of its single places."""
        return [self.name, *(f"{self.name}_{place + 1}" for place in range(self.times))]

    def form_for(self, decider: Value) -> str | None:
        """Returns the notation of bytes that another field decides about, or None where none does."""
        if not self.decider:
            return None
        return self.forms.get(decider, "number") if isinstance(decider, str) else "number"

    def decode(self, content: bytes, form: str | None) -> Value:
        if form:
            return _decode_form(content, form)
        if self.type in _NUMBERS:
            return self._number(int.from_bytes(content, sys.byteorder, signed=self.type in _SIGNED))
        if self.type == "mac":
            return mac_text(content)
        if self.type == "text":
            return content.split(b"\0", 1)[0].decode("utf-8", "surrogateescape")
        if self.type == "ipv4":
            return str(ipaddress.IPv4Address(content))
        if self.type == "oui":
            return content.hex(":")
        if self.type == "date":
            return "20" + content.hex("-")
        if self.type == "list":
            return list(content)
        if self.type == "ports":
            return _members(int.from_bytes(content, "big"), 1)
        if self.type == "idset":
            words = [content[at:at + 4] for at in range(0, len(content), 4)]
            return [32 * at + bit for at, word in enumerate(words) for bit in range(32)
                    if int.from_bytes(word, sys.byteorder) >> bit & 1]
        return content

    def _number(self, number: int) -> Value:
        for name, value in self.values.items():
            if value == number:
                return name
        if self.flags:
            named = {bit: name for name, bit in self.flags.items()}
            return [named.get(bit, f"bit {bit}") for bit in range(8 * self.size) if number >> bit & 1]
        return number if self.scale == 1 else round(number * self.scale, 9)

    def encode(self, value: Value, name: str, form: str | None, checked: bool = True) -> bytes:
        """Returns the bytes of a value. Raises ValueError, which starts with the name, where it does not take one. What
        is not checked may be any number that fits.
        """
        try:
            content = _encode_form(value, form, self.size) if form else self._encode(value, checked)
        except (ValueError, TypeError, OverflowError) as error:
            raise ValueError(f"{name}: {error}") from None
        return content

    def _encode(self, value: Value, checked: bool) -> bytes:
        if self.type in _NUMBERS:
            return self._count_of(value, checked).to_bytes(self.size, sys.byteorder, signed=self.type in _SIGNED)
        if self.type == "mac":
            return mac_bytes(_text(value))
        if self.type == "ipv4":
            return ipaddress.IPv4Address(_text(value)).packed
        if self.type in ("oui", "date"):
            digits = "".join(each for each in _text(value) if each not in ":-.")
            if self.type == "date" and len(digits) == 8:
                digits = digits[2:]
            return _exactly(bytes.fromhex(digits), self.size)
        if self.type == "text":
            return _at_most(_text(value).encode("utf-8", "surrogateescape"), self.size - 1).ljust(self.size, b"\0")
        if self.type == "list":
            return _at_most(bytes(_numbers(value, 0, 255)), self.size).ljust(self.size, b"\0")
        if self.type == "ports":
            return sum(1 << number - 1 for number in set(_numbers(value, 1, 8 * self.size))).to_bytes(self.size, "big")
        if self.type == "idset":
            members = set(_numbers(value, 0, 8 * self.size - 1))
            bits = sum(1 << number for number in members).to_bytes(self.size, "little")
            words = [int.from_bytes(bits[at:at + 4], "little") for at in range(0, self.size, 4)]
            return b"".join(word.to_bytes(4, sys.byteorder) for word in words)
        if not isinstance(value, bytes):
            raise ValueError(f"bytes are needed, not {value!r}")
        return _at_most(value, self.size).ljust(self.size, b"\0")

    def _count_of(self, value: Value, checked: bool) -> int:
        """Returns the number that stands in the record for a value."""
        if isinstance(value, str):
            if value not in self.values:
                raise ValueError(f"{value!r} is not {self._expected()}")
            return self.values[value]
        if self.flags and isinstance(value, list):
            unknown = [flag for flag in value if flag not in self.flags]
            if unknown:
                raise ValueError(f"{unknown[0]!r} is not {self._expected()}")
            return sum(1 << self.flags[flag] for flag in self.flags if flag in value)
        if not isinstance(value, (int, float)):
            raise ValueError(f"{value!r} is not {self._expected()}")
        if checked and self.range and not self.range[0] <= value <= self.range[1]:
            raise ValueError(f"{value!r} is not {self._expected()}")
        # A large whole number is no float without losing digits.
        count = value if isinstance(value, int) and self.scale == 1 else round(value / self.scale)
        if checked and self.values and count not in self.values.values():
            raise ValueError(f"{value!r} is not {self._expected()}")
        return count

    def _expected(self) -> str:
        if self.values:
            return "one of " + ", ".join(self.values)
        if self.flags:
            return "a list of some of " + ", ".join(self.flags)
        unit = f" {self.unit}" if self.unit else ""
        return f"a number from {self.range[0]} to {self.range[1]}{unit}" if self.range else f"a number{unit}"


def _members(bits: int, first: int) -> list[Value]:
    return [first + bit for bit in range(bits.bit_length()) if bits >> bit & 1]


def _decode_form(content: bytes, form: str) -> Value:
    if form == "mac":
        return mac_text(content)
    if form == "ipv4":
        return str(ipaddress.IPv4Address(content[-4:]))
    return int.from_bytes(content, "big")


def _encode_form(value: Value, form: str, size: int) -> bytes:
    if form == "mac":
        return mac_bytes(_text(value))
    if form == "ipv4":
        return ipaddress.IPv4Address(_text(value)).packed.rjust(size, b"\0")
    if not isinstance(value, int):
        raise ValueError(f"a number is needed, not {value!r}")
    return value.to_bytes(size, "big")


def _text(value: Value) -> str:
    if not isinstance(value, str):
        raise ValueError(f"a text is needed, not {value!r}")
    if "\0" in value:
        raise ValueError("a text ends at a zero byte, so it cannot hold one")
    return value


def _numbers(value: Value, least: int, most: int) -> list[int]:
    if not isinstance(value, list):
        raise ValueError(f"a list of numbers is needed, not {value!r}")
    numbers = [number for number in value if isinstance(number, int)]
    if len(numbers) != len(value):
        raise ValueError(f"a list of numbers is needed, not {value!r}")
    for number in numbers:
        if not least <= number <= most:
            raise ValueError(f"{number} is not a number from {least} to {most}")
    return numbers


def _at_most(content: bytes, size: int) -> bytes:
    if len(content) > size:
        raise ValueError(f"at most {size} bytes fit, not {len(content)}")
    return content


def _exactly(content: bytes, size: int) -> bytes:
    if len(content) != size:
        raise ValueError(f"{size} bytes are needed, not {len(content)}")
    return content
