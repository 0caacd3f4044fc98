"""What parts of records mean: from bytes to values by name, and back."""

from __future__ import annotations

import dataclasses
import sys
from collections.abc import Iterator, Mapping
from typing import TypeAlias

from ._field import Field, Value

Values: TypeAlias = dict[str, Value]


@dataclasses.dataclass(frozen=True)
class Layout:
    """The fields of a part of a record. Those of an answer are read, those of a request are written."""

    name: str
    record: str
    commands: tuple[str, ...]
    of_answer: bool
    present: str
    kept: bool
    index: int | None  # of what is kept, where several things share a code
    brief: str
    fields: tuple[Field, ...]

    @property
    def start(self) -> int:
        return min(field.offset for field in self.fields)

    @property
    def end(self) -> int:
        return max(field.end for field in self.fields)

    def has(self, name: str) -> bool:
        return any(name in field.names() for field in self.fields)

    def field(self, name: str) -> Field:
        for field in self.fields:
            if name in field.names():
                return field
        known = ", ".join(name for field in self.fields for name in field.names()[:1])
        raise ValueError(f"{name}: not a field of {self.name}; known are {known}")

    def read(self, content: bytes, offset: int = 0) -> Values:
        """Returns the values in bytes that stand at this offset of the record. A field that is not among them is left
        out, and of a repeated field as many values are returned as count.
        """
        whole = bytes(offset) + content
        values: Values = {}
        for field in self.fields:
            if field.offset < offset:
                continue
            if field.times:
                values[field.name] = [self._value(field, whole, place) for place in range(self._count(field, whole))
                                      if field.part_of(place).stop <= len(whole)]
            elif field.end <= len(whole):
                values[field.name] = self._value(field, whole, 0)
        return values

    def write(self, values: Mapping[str, Value], content: bytearray, checked: bool = True) -> None:
        """Puts values into a record. Other fields stay, but one that has no meaning with the others becomes zero.

        Raises ValueError where a field does not take a value, or has no meaning with the others. What an OLT told need
        not be checked: it may have a number that cannot be set, where nothing was set yet.
        """
        self._put_all(values, content, checked)
        for field in self.fields:
            if self._has_meaning(field, content):
                continue
            named = [name for name in field.names() if name in values]
            place = slice(field.offset, field.end)
            if checked and named and any(content[place]):
                raise self._meaningless(named[0], field)
            content[place] = bytes(field.end - field.offset)

    def check(self, values: Mapping[str, Value]) -> None:
        """Raises ValueError where no record can have these values, whatever those are that are not named."""
        content = bytearray(self.end)
        self._put_all(values, content, True)
        for name in values:
            field = self.field(name)
            if any(content[field.offset:field.end]) and self._is_ruled_out(field, values):
                raise self._meaningless(name, field)

    def _put_all(self, values: Mapping[str, Value], content: bytearray, checked: bool) -> None:
        # What another field decides about is written when that field has its value.
        for decided in (False, True):
            for name, value in values.items():
                field = self.field(name)
                if bool(field.decider) == decided:
                    self._put(field, name, value, content, checked)

    def _is_ruled_out(self, field: Field, values: Mapping[str, Value]) -> bool:
        """Returns whether a field has no meaning with what is named of those that it depends on."""
        if not field.condition:
            return False
        condition = self.field(field.condition)
        if condition.name not in values:
            return self._is_ruled_out(condition, values)
        named = condition.encode(values[condition.name], condition.name, None)
        return condition.decode(named, None) not in field.where

    @staticmethod
    def _meaningless(name: str, field: Field) -> ValueError:
        return ValueError(f"{name}: has a meaning only where {field.condition} is {' or '.join(field.where)}")

    def _put(self, field: Field, name: str, value: Value, content: bytearray, checked: bool) -> None:
        if field.times and name == field.name:
            for place in range(field.times):  # what was behind a longer list must not stay
                content[field.part_of(place)] = bytes(field.size)
        for place, one in self._places(field, name, value):
            form = field.form_for(self._decider(field, content, place))
            content[field.part_of(place)] = field.encode(one, name, form, checked)
        if field.times and name == field.name and field.counter and isinstance(value, list):
            counter = self.field(field.counter)
            content[counter.part_of(0)] = counter.encode(len(value), field.counter, None)

    def _places(self, field: Field, name: str, value: Value) -> Iterator[tuple[int, Value]]:
        """Returns the places that a name stands for: one, or those of all values of a repeated field."""
        if not field.times:
            return iter([(0, value)])
        if name != field.name:
            return iter([(int(name.rpartition("_")[2]) - 1, value)])
        if not isinstance(value, list) or len(value) > field.times:
            raise ValueError(f"{name}: a list of at most {field.times} values is needed, not {value!r}")
        return enumerate(value)

    def _value(self, field: Field, content: bytes, place: int) -> Value:
        return field.decode(content[field.part_of(place)], field.form_for(self._decider(field, content, place)))

    def _decider(self, field: Field, content: bytes | bytearray, place: int) -> Value:
        if not field.decider:
            return None
        decider = self.field(field.decider)
        return decider.decode(bytes(content[decider.part_of(place)]), None)

    def _count(self, field: Field, content: bytes) -> int:
        if not field.counter:
            return field.times
        counter = self.field(field.counter)
        number = int.from_bytes(content[counter.part_of(0)], sys.byteorder)
        return min(number, field.times)

    def _has_meaning(self, field: Field, content: bytearray) -> bool:
        if not field.condition:
            return True
        condition = self.field(field.condition)
        return condition.decode(bytes(content[condition.part_of(0)]), None) in field.where
