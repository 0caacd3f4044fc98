#!/usr/bin/python3
"""What a call of the exact layer costs from Python, beside the same call from C, over a board that does nothing.

python_cost.py LIBRARY    the library with the C side; both sides run by turns, and the best turn of each counts

Exit status 1 where Python takes more than 3 us over C.
"""

import sys
import time

import cffi
from bsp_pon import raw, records

TURNS, CALLS = 75, 1000  # turns are so short that some of them are not interrupted on a busy machine
BUDGET = 3000  # ns
MAC = b"\x02\x00\x5e\x10\x00\x01"
RECORD = records.bsp_pon_msg()
COMPARED = [
    ("numbers", "bsp_pon_no_bind_onu_spec_id", lambda call: call(1, 5)),
    ("texts", "bsp_pon_bind_onu_spec_id", lambda call: call(1, 5, MAC, "customer 1207", None, 0, None)),
    ("block", "bsp_pon_onu_ctc_get_sn", lambda call: call(1, 5)),
    ("record", "bsp_ponmsg_cfg_set", lambda call: call(RECORD)),
]


def python_time(make, call):
    start = time.perf_counter_ns()
    for _ in range(CALLS):
        make(call)
    return (time.perf_counter_ns() - start) / CALLS


def main(library):
    ffi = cffi.FFI()
    ffi.cdef("".join(f"uint64_t time_{name}(uint32_t count);" for name, _, _ in COMPARED))
    c_side = ffi.dlopen(library)
    dear = False
    print(f"{'':10}{'C':>8}{'Python':>10}{'more':>10}   ns a call; at most {BUDGET} more")
    for name, operation, make in COMPARED:
        call = getattr(raw, operation)
        turns = [(getattr(c_side, f"time_{name}")(CALLS) / CALLS, python_time(make, call)) for _ in range(TURNS)]
        in_c, in_python = (min(side) for side in zip(*turns))
        more = in_python - in_c
        dear = dear or more > BUDGET
        remark = "   TOO MUCH" if more > BUDGET else ""
        print(f"{name:10}{in_c:8.0f}{in_python:10.0f}{more:10.0f}   {operation}{remark}")
    return int(dear)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
