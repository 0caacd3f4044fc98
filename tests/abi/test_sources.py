"""These tests check that the library's sources use of the board's headers only what every board's headers have."""

import pathlib
import tempfile
import unittest

import abi

# This is all that the library uses of the IPC library. It compiles with any header that has these.
PROTOTYPES = """
#include <stdint.h>
extern "C" {
int32_t ipc_set_exec(uint32_t, uint32_t, const void *, uint32_t, uint32_t *);
int32_t ipc_get_exec(uint32_t, uint32_t, const void *, uint32_t, void *, uint32_t *, uint32_t *);
int32_t ipc_dgram_set_exec(uint32_t, uint32_t, const void *, uint32_t, uint32_t *);
int32_t ipc_dgram_get_exec(uint32_t, uint32_t, const void *, uint32_t, void *, uint32_t *, uint32_t *);
}
"""


class Sources(unittest.TestCase):
    def test_need_four_prototypes_of_the_ipc_library(self):
        with tempfile.TemporaryDirectory() as folder:
            board = pathlib.Path(folder) / "board"
            board.mkdir()
            (board / "ipc.h").write_text(PROTOTYPES, encoding="utf-8")
            sources = sorted((abi.ROOT / "src").rglob("*.cpp"))
            self.assertTrue(sources)
            for source in sources:
                with self.subTest(source.name):
                    abi.run(["g++", "-std=c++20", "-fno-exceptions", "-fno-rtti", "-fsyntax-only", "-Wall", "-Werror",
                             f"-I{folder}", "-Iinclude", "-Iboard/include", "-Isrc", source])


if __name__ == "__main__":
    unittest.main()
