"""The client library of an EPON OLT's management plane.

Olt is an OLT with its ONUs, in Python's way. raw has every operation, exactly as the C functions are, and aio has what
asyncio needs. Everything here may be used from any thread; each thread has a connection of its own, and a call waits
without holding up other threads.
"""

from ._row import Row, to_dataframe, to_records
from .database import Database, Memory
from .errors import AnswerError, BspError, IpcError, StatusError, Unknown
from .olt import Olt
from .onu import Onu
from .onu_ids import onu_id_set

__all__ = [
    "AnswerError", "BspError", "Database", "IpcError", "Memory", "Olt", "Onu", "Row", "StatusError", "Unknown",
    "onu_id_set", "to_dataframe", "to_records",
]
