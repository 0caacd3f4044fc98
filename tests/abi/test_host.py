"""These tests check the library as it is built for a Linux host: a program that knows nothing of the board can load it
alone.

LIBBSP_PON names the library.
"""

import ctypes
import os
import re
import unittest

import abi

LIBRARY = os.environ["LIBBSP_PON"]


class HostLibrary(unittest.TestCase):
    def test_names_the_boards_library_as_needed(self):
        needed = re.findall(r"\(NEEDED\).*\[(.+?)\]", abi.run(["readelf", "-d", LIBRARY]))
        self.assertEqual([name for name in needed if not name.startswith("libc.so")], ["libboard.so.0"])

    def test_is_loaded_alone_with_every_symbol_resolved(self):
        library = ctypes.CDLL(LIBRARY, mode=os.RTLD_NOW)
        ids = (ctypes.c_uint32 * 4)(0, 0, 0, 1)
        self.assertEqual(library.ont_id_res_exists_ont(ids), 1)


if __name__ == "__main__":
    unittest.main()
