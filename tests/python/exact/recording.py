"""The recording board and the C functions, as the public headers declare them, for tests that compare with them.

The tests run with the board preloaded, so that it takes the place of the board's libraries for everybody.
"""

import os
import pathlib
import re

import cffi

ROOT = pathlib.Path(__file__).resolve().parents[3]


def declarations(header):
    """Returns the declarations of a C header, without what only a preprocessor understands."""
    text = (ROOT / header).read_text(encoding="utf-8")
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)
    text = re.sub(r"#ifdef __cplusplus.*?#endif", "", text, flags=re.DOTALL)
    constants = dict(re.findall(r"#define (\w+) (\d+)u?\s", text))
    text = re.sub(r"^\s*#.*$", "", text, flags=re.MULTILINE)
    for name, value in constants.items():
        text = re.sub(rf"\[{name}\]", f"[{value}]", text)
    return text.replace("BSP_PON_API", "").replace("IPC_MAX_LENGTH", "8192")


ffi = cffi.FFI()
ffi.cdef(declarations("include/bsp_pon.h"))
ffi.cdef(declarations("testing/include/bsp_testing/board.h"))
library = ffi.dlopen(os.environ["LIBBSP_PON"])
board = ffi.dlopen(os.environ["LD_PRELOAD"])


class Sent:
    """What the one exchange since the last reset was, and what became of handles and blocks."""

    def __init__(self):
        assert board.rb_exchanges() == 1, board.rb_exchanges()
        exchange = board.rb_exchange_at(0)
        self.request = ffi.buffer(exchange.sent, exchange.request_length)[:]
        self.where = (exchange.call, exchange.module, exchange.msg_type, exchange.preset, exchange.room)


kept = []


def script(status, answer):
    """Resets the board. The next exchange is answered with this status word and these bytes."""
    board.rb_reset()
    scripted = ffi.new("rb_answer *")
    content = ffi.new("uint8_t[]", answer)
    kept[:] = [scripted, content]
    scripted.bytes, scripted.length, scripted.status = content, len(answer), status
    assert board.rb_script_answer(scripted) == 0
    board.rb_script_file(0, content, len(answer))


def made_handles():
    """Returns how many result databases were handed out."""
    return sum(1 for each in databases() if each.call != board.RB_DB_FREE and each.handle)


def released_handles():
    return sum(1 for each in databases() if each.call == board.RB_DB_FREE and each.handle)


def databases():
    return [board.rb_db_at(index) for index in range(board.rb_dbs())]


def blocks(call):
    """Returns the blocks of memory that were handed out or released."""
    records = [board.rb_util_at(index) for index in range(board.rb_utils())]
    return [each.block for each in records if each.call == call and each.block]
