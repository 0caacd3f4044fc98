"""This module writes the C side of the Python bindings: what Python sees, and the C that it is compiled from.

Each operation has a C function that makes the call and also says what the IPC library returned. Its type is written
once more from the catalogue, so that it does not compile with a header that says anything else.
"""

import re

from ..header import struct_of
from ..text import GENERATED

BOARD = [
    "typedef struct db_handle db_handle;",
    "void db_free(db_handle *db);",
    "const char *db_text(const db_handle *db, uint32_t *length);",
    "void pfree(void *block);",
    "const char *ipc_strerror(int32_t value);",
    "const char *board_ipc_directory(void);",
    "void board_ipc_use_directory(const char *directory);",
    "const char *board_ipc_use_thread_directory(const char *directory);",
    "uint32_t board_ipc_use_thread_timeout(uint32_t milliseconds);",
    "void board_log_default(const char *words);",
]


def cdef(catalogue):
    """Returns the declarations that Python sees."""
    lines = [f"/* {GENERATED}. */", *BOARD]
    for record in catalogue.records.values():
        lines += plain(struct_of(record))
    for family in catalogue.families:
        for entry in family.types:
            members = [f"uint32_t {member.name}[{member.words}];" for member in entry.members]
            lines.append(f"typedef struct {entry.name} {{ {' '.join(members)} }} {entry.name};")
        lines += [f"{prototype(function.returns.type, function.name, function.args)};" for function in family.functions]
    for operation in catalogue.operations():
        lines.append(f"{prototype('uint64_t', 'exact_' + operation.name, operation.args)};")
    return "\n".join(lines) + "\n"


def source(catalogue):
    """Returns the C that stands before what cffi writes."""
    lines = [f"/* {GENERATED}. */", '#include "bsp_pon.h"', "", '#include "board/datastore.h"',
             '#include "board/ipc.h"', '#include "board/service.h"', '#include "board/util.h"', "",
             "/* The status word, and above it what the IPC library returned. Both are 0 where all went well. */",
             "static uint64_t outcome(uint32_t status)", "{",
             "    return (uint64_t)(uint32_t)board_ipc_take_thread_result() << 32 | status;", "}"]
    for record in catalogue.records.values():
        lines.append(f'_Static_assert(sizeof({record.name}) == {record.size}, "the size of {record.name}");')
    for operation in catalogue.operations():
        names = ", ".join(operation.args)
        kind = prototype("uint32_t", "", operation.args)
        lines += ["", f"_Static_assert(__builtin_types_compatible_p(__typeof__({operation.name}), {kind}),",
                  f'               "the header declares {operation.name} in another way");',
                  f"static {prototype('uint64_t', 'exact_' + operation.name, operation.args)}", "{",
                  "    board_ipc_take_thread_result();", f"    return outcome({operation.name}({names}));", "}"]
    return "\n".join(lines) + "\n"


def prototype(result, name, args):
    declared = ", ".join(argument.declaration.replace("{}", argument.name) for argument in args.values()) or "void"
    return f"{result} {name}({declared})"


def plain(lines):
    """Returns C without its comments."""
    return re.sub(r"/\*.*?\*/", "", "\n".join(lines), flags=re.DOTALL).split("\n")
