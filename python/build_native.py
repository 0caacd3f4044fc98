"""Makes the C of the extension of what the generator wrote: called as a script with the generated folder and the output,
or by setuptools through `ffi`.
"""

import pathlib
import sys

import cffi


def builder(generated: pathlib.Path) -> cffi.FFI:
    """Returns what writes and compiles the extension, which is part of the package."""
    ffi = cffi.FFI()
    ffi.cdef((generated / "native.cdef").read_text(encoding="utf-8"))
    ffi.set_source("bsp_pon._native", (generated / "native.c").read_text(encoding="utf-8"), libraries=["bsp_pon", "board"])
    return ffi


if __name__ == "__main__":
    builder(pathlib.Path(sys.argv[1])).emit_c_code(sys.argv[2])
