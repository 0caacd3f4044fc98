"""Other Python threads go on while a call waits for its answer."""

from bsp_pon import raw
from recording import board, ffi

ffi.cdef("void note_whether_gil_is_held(const rb_exchange *exchange, void *context);")


def test_a_call_holds_up_nobody():
    board.rb_reset()
    is_held = ffi.new("int *", -1)
    scripted = ffi.new("rb_answer *")
    scripted.during = ffi.cast("void (*)(const rb_exchange *, void *)", board.note_whether_gil_is_held)
    scripted.context = is_held
    assert board.rb_script_answer(scripted) == 0
    raw.bsp_pon_no_bind_onu_all(1)
    assert is_held[0] == 0
