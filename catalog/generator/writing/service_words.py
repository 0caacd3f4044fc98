"""This module writes what the simulated service knows beyond the contract."""

from .text import GENERATED

TYPES = {"u8": "uint8_t", "u16": "uint16_t", "s16": "int16_t", "u32": "uint32_t", "s32": "int32_t", "u64": "uint64_t",
         "mac": "Mac", "idset": "IdSet", "ipv4": "Bytes<4>", "oui": "Bytes<3>", "date": "Bytes<3>"}


def service_words(catalogue):
    """Writes the simulated service's own status words, and the offsets of the fields of its layouts."""
    lines = [f"// {GENERATED}.", "// clang-format off", "#pragma once", "", "#include <cstdint>", "",
             '#include "place.h"', "", "// Status words of the simulated PON service."]
    for status in catalogue.statuses.values():
        if not status.of_library:
            lines.append(f"inline constexpr uint32_t {status.name} = {status.value}; // {status.brief}")
    lines += ["", "// Fields that the service gives to opaque parts of a record."]
    for layout in catalogue.layouts.values():
        if layout.kept:
            continue
        lines += ["", f"namespace layout::{layout.name}", "{"]
        lines += [place_of(field) for field in layout.fields.values() if field.index == 0]
        lines += [f"}} // namespace layout::{layout.name}"]
    return "\n".join(lines) + "\n"


def place_of(field):
    kind = "Bytes" if field.type in ("list", "ports") else field.type.capitalize()
    of_type = TYPES.get(field.type) or f"{kind}<{field.size}>"
    repeated = f", {field.times}, {field.every}" if field.times > 1 else ""
    return f"inline constexpr At<{of_type}{repeated}> {field.base}{{{field.offset}}}; // {field.brief}"
