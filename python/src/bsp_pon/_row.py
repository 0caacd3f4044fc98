"""What the rows of all views have in common: they are made of what the service sent, and checked."""

from __future__ import annotations

import dataclasses
from typing import Any, ClassVar, Iterable, Mapping, NamedTuple, TypeVar

from .errors import AnswerError


class Column(NamedTuple):
    name: str
    type: type
    nullable: bool
    unit: str


Self = TypeVar("Self", bound="Row")


@dataclasses.dataclass(frozen=True)
class Row:
    """A row of a view."""

    VIEW: ClassVar[str] = ""
    COLUMNS: ClassVar[tuple[Column, ...]] = ()

    @classmethod
    def read(cls: type[Self], cells: Mapping[str, object]) -> Self:
        """Returns the row of these cells. Columns that the view does not have are passed over."""
        return cls(**{column.name: cls._cell(column, cells) for column in cls.COLUMNS})

    @classmethod
    def _cell(cls, column: Column, cells: Mapping[str, object]) -> Any:
        value = cells.get(column.name)
        if value is None:
            if column.nullable:
                return None
            raise AnswerError(f"{cls.VIEW}: {column.name} is missing")
        if column.type is float and type(value) is int:
            return float(value)
        if type(value) is not column.type:
            raise AnswerError(f"{cls.VIEW}: {column.name} is {value!r}, which is no {column.type.__name__}")
        return value

    def to_record(self) -> dict[str, object]:
        """Returns the columns and their values."""
        return {column.name: getattr(self, column.name) for column in self.COLUMNS}


def to_records(rows: Iterable[Row]) -> list[dict[str, object]]:
    """Returns rows as dictionaries, as JSON, CSV and data frames take them."""
    return [row.to_record() for row in rows]


def to_dataframe(rows: Iterable[Row], view: type[Row] | None = None) -> Any:
    """Returns rows as a data frame of pandas. Whole numbers that may be null stay whole: they are Int64.

    Its attrs["units"] has the units of columns. Without rows there are no columns, unless the view is named, as
    bsp_pon.rows.OnuInfo. Needs pandas, which is imported when this is called.
    """
    import pandas  # type: ignore[import]

    given = list(rows)
    kind: type[Row] = view or (type(given[0]) if given else Row)
    columns = kind.COLUMNS
    frame = pandas.DataFrame(to_records(given), columns=[column.name for column in columns])
    types = {int: "Int64", float: "Float64", bool: "boolean", str: "string"}
    frame = frame.astype({column.name: types[column.type] for column in columns})
    frame.attrs["units"] = {column.name: column.unit for column in columns if column.unit}
    return frame
