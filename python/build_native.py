"""Makes the C of the extension of what the generator wrote. Called as a script, with that folder and the output."""

import pathlib
import sys

import cffi


def write_source(generated, output):
    ffi = cffi.FFI()
    ffi.cdef((generated / "native.cdef").read_text(encoding="utf-8"))
    ffi.set_source("bsp_pon._native", (generated / "native.c").read_text(encoding="utf-8"))
    ffi.emit_c_code(str(output))


if __name__ == "__main__":
    write_source(pathlib.Path(sys.argv[1]), sys.argv[2])
