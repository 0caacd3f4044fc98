"""Compares the binary interfaces of the shared libraries, as they are built for a Linux host, with those that programs
were linked with.

SHARED_LIBRARIES names the libraries, with ';' between, and DEBUG_FOLDER where the debugger's information of installed
ones is. With WRITE_ABI=1 their descriptions are written anew instead; what
then differs in them breaks programs, except for what is added.
"""

import os
import pathlib
import subprocess
import unittest

FOLDER = pathlib.Path(__file__).parent
LIBRARIES = [pathlib.Path(name) for name in os.environ["SHARED_LIBRARIES"].split(";")]
HEADERS = [str(FOLDER.parents[1] / folder)
           for folder in ("include", "board/include", "board/host/include", "testing/include")]
# Where the libraries were built, and what is behind the types that users see, is none of the interface.
DESCRIBE = ["abidw", "--exported-interfaces-only", "--no-corpus-path", "--no-comp-dir-path", "--no-show-locs",
            "--no-elf-needed", "--drop-private-types",
            *(word for folder in HEADERS for word in ("--headers-dir", folder))]
COMPARE = ["abidiff", "--exported-interfaces-only", "--no-added-syms", "--drop-private-types",
           "--debug-info-dir2", os.environ.get("DEBUG_FOLDER", "/usr/lib/debug"),
           *(word for folder in HEADERS for word in ("--headers-dir2", folder))]


def description_of(library: pathlib.Path) -> pathlib.Path:
    return FOLDER / (library.name.split(".")[0] + ".abi.xml")


class Binaries(unittest.TestCase):
    def test_programs_need_not_be_linked_again(self) -> None:
        for library in LIBRARIES:
            with self.subTest(library.name):
                if os.environ.get("WRITE_ABI"):
                    with description_of(library).open("w", encoding="utf-8") as file:
                        subprocess.run([*DESCRIBE, library], stdout=file, check=True)
                done = subprocess.run([*COMPARE, description_of(library), library], capture_output=True, text=True,
                                      check=False)
                self.assertEqual((done.returncode, done.stdout + done.stderr), (0, ""))


if __name__ == "__main__":
    unittest.main()
