"""These tests check the library as a board's build system makes it: what it exports, what it needs, and that it has no
state.

BOARD_LIBRARIES is the folder in which the build has put the library and its objects, in a folder for each target and
optimisation. LIBBSP_PON names one more library to check, built for the host.
"""

import os
import pathlib
import unittest

import abi

BOARD_FUNCTIONS = {
    "ipc_set_exec", "ipc_get_exec", "ipc_dgram_set_exec", "ipc_dgram_get_exec", "db_from_shmem", "db_from_string",
    "db_create_fromfile", "userlog_err", "userlog_debug", "pmalloc", "pfree", "get_from_file", "delete_file"}
C_FUNCTIONS = {"memset", "memcpy", "strcpy", "sprintf"}
# The compiler's own start-up objects refer to these symbols weakly.
START_UP = {"__cxa_finalize", "__gmon_start__", "_ITM_deregisterTMCloneTable", "_ITM_registerTMCloneTable"}
# These sections have writable contents, or code that runs when the library is loaded. Constants that need relocation
# are read-only when they are used.
STATE = (".data", ".bss", ".sdata", ".sbss", ".tdata", ".tbss", ".init", ".fini", ".ctors", ".dtors", ".preinit")
READ_ONLY = (".data.rel.ro",)


class Library(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.libraries, cls.objects = [], []
        for target in abi.TARGETS:
            if not abi.available(target):
                print(f"no {abi.TARGETS[target]}g++: nothing is tested for {target}")
                continue
            for optimisation in abi.OPTIMISATIONS:
                folder = pathlib.Path(os.environ["BOARD_LIBRARIES"]) / (target + optimisation)
                cls.libraries.append((target, folder / abi.LIBRARY))
                cls.objects.append((target, optimisation, sorted(folder.glob("*.o"))))
        if "LIBBSP_PON" in os.environ:
            cls.libraries.append(("host", pathlib.Path(os.environ["LIBBSP_PON"])))

    def test_is_built_by_the_command_of_the_page_on_boards(self):
        page = " ".join((abi.ROOT / "docs/board.md").read_text(encoding="utf-8").replace("\\\n", " ").split())
        self.assertIn(abi.BUILD.format(prefix="") + " " + abi.WITHOUT_RUNTIME, page)

    def test_exports_exactly_the_catalogues_operations(self):
        for target, library in self.libraries:
            with self.subTest(library):
                exported = abi.dynamic_symbols(target, library, "--defined-only")
                self.assertEqual(set(exported), abi.mapped_names())
                self.assertEqual(set(exported.values()), {"T"})

    def test_header_declares_exactly_what_is_exported(self):
        self.assertEqual(set(abi.prototypes()), abi.mapped_names())

    def test_needs_the_board_and_four_c_functions_at_most(self):
        for target, library in self.libraries:
            with self.subTest(library):
                undefined = abi.dynamic_symbols(target, library, "--undefined-only")
                needed = {name for name in undefined if name not in START_UP}
                self.assertEqual(needed - BOARD_FUNCTIONS - C_FUNCTIONS, set())
                self.assertIn("ipc_set_exec", needed)
                for name in START_UP & set(undefined):
                    self.assertEqual(undefined[name], "w", f"{name} is needed for good")

    def test_is_linked_with_no_library_but_that_of_c(self):
        for target, library in self.libraries:
            with self.subTest(library):
                rows = abi.run([abi.TARGETS[target] + "readelf", "-d", library]).split("\n")
                needed = [row.split("[")[1].rstrip("]") for row in rows if "(NEEDED)" in row]
                board = ["libboard.so.0"] if str(library) == os.environ.get("LIBBSP_PON") else []
                self.assertEqual([name for name in needed if not name.startswith("libc.so")], board)

    def test_keeps_no_state_and_runs_nothing_on_loading(self):
        sources = len(list((abi.ROOT / "src").rglob("*.cpp")))
        for target, optimisation, objects in self.objects:
            found = abi.sections(target, objects)
            self.assertEqual(len(found), sources)
            for file, sections in found.items():
                with self.subTest(target, file=file, optimisation=optimisation):
                    state = {name: size for name, size in sections.items()
                             if size and name.startswith(STATE) and not name.startswith(READ_ONLY)}
                    self.assertEqual(state, {})


if __name__ == "__main__":
    unittest.main()
