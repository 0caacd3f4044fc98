"""What can go wrong, as exceptions."""

from __future__ import annotations

from ._tables import STATUSES


class BspError(Exception):
    """The base of all exceptions of this package."""


class StatusError(BspError):
    """The service answered, or the library refused, with a status word that is not success.

    number: the status word.
    name: its name, as PON_ERR_NO_PORT, or None where it has none.
    text: the same in words.
    operation: the name of the operation.
    outputs: what the operation delivered all the same, in the form in which it returns it.
    """

    def __init__(self, number: int, operation: str, outputs: object = None) -> None:
        name, text = STATUSES.get(number, (None, "a status word without a name"))
        self.number = number
        self.name: str | None = name
        self.text = text
        self.operation = operation
        self.outputs = outputs
        super().__init__(number, operation)

    def __str__(self) -> str:
        return f"{self.operation}: {self.name or 'status'} ({self.number}): {self.text}"

    def __reduce__(self) -> tuple[type[StatusError], tuple[int, str]]:
        # What was delivered may be memory of this process.
        return StatusError, (self.number, self.operation)


class IpcError(BspError):
    """The exchange with the service failed, so that there is no status word.

    number: what the IPC library returned, as -3.
    text: the same in words. It says whether the request may have taken effect all the same.
    operation: the name of the operation.
    """

    def __init__(self, number: int, text: str, operation: str) -> None:
        self.number = number
        self.text = text
        self.operation = operation
        self.where = ""  # which service was looked for, as it is told
        super().__init__(number, text, operation)

    def __str__(self) -> str:
        return f"{self.operation}: IPC failure {self.number}: {self.text}{self.where}"


class AnswerError(BspError):
    """The service answered with something that does not have the form that it should have."""


class Unknown(BspError, LookupError):
    """There is nothing of the name, address or number that was asked for."""
