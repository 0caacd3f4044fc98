"""What the simulated service knows beyond the contract."""

from .text import GENERATED


def service_words(catalogue):
    """The simulated service's own status words, and where its layouts keep their fields."""
    lines = [f"// {GENERATED}.", "// clang-format off", "#pragma once", "", "#include <cstdint>", "",
             "// Status words of the simulated PON service."]
    for status in catalogue.statuses.values():
        if not status.of_library:
            lines.append(f"inline constexpr uint32_t {status.name} = {status.value}; // {status.brief}")
    lines += ["", "// Offsets of the fields that the service gives to opaque parts of a record."]
    for layout in catalogue.layouts.values():
        lines += ["", f"namespace layout::{layout.name}", "{"]
        for field in layout.fields.values():
            if field.index:
                continue
            lines.append(f"inline constexpr uint32_t {field.base} = {field.offset}; // {field.type}: {field.brief}")
            if field.times > 1:
                lines.append(f"inline constexpr uint32_t {field.base}_every = {field.every}; // from one {field.base} to the next")
        lines += [f"}} // namespace layout::{layout.name}"]
    return "\n".join(lines) + "\n"
