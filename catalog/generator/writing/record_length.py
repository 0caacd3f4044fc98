"""This module writes the lengths of records, for stand-ins of the board."""

from .text import GENERATED


def record_length(catalogue):
    """Writes the lengths in C, for the stand-ins of the board. A caller who states no bound has room for such a length.
    """
    lines = [f"/* {GENERATED}. */", "/* clang-format off */", "#ifndef RECORD_LENGTH_H", "#define RECORD_LENGTH_H", "",
             "#include <stdint.h>", "",
             "/* The length of the records of a channel; 0 where the channel is not known. */",
             "static inline uint32_t record_length(uint32_t module, uint32_t msg_type)", "{",
             f"    if (module != {catalogue.module}) return 0;", "    switch (msg_type) {"]
    by_size = {}
    for channel in catalogue.channels.values():
        by_size.setdefault(channel.record.size, []).append(channel.type)
    for size, types in by_size.items():
        lines += [f"    case {channel_type}:" for channel_type in types] + [f"        return {size};"]
    return "\n".join([*lines, "    default:", "        return 0;", "    }", "}", "", "#endif"]) + "\n"
