"""This module writes a structure for the rows of each view."""

from .text import GENERATED, quoted

TYPES = {"u32": "uint32_t", "u64": "uint64_t", "text": "std::string_view", "mac": "Mac", "boolean": "bool", "real": "double"}


def view_rows(catalogue):
    lines = [f"// {GENERATED}.", "// clang-format off", "#pragma once", "", "#include <array>", "#include <cstdint>",
             "#include <optional>", "#include <string_view>", "", "// A row of each view. Its texts are those of whoever makes it.",
             "namespace view", "{", "", "using Mac = std::array<uint8_t, 6>;"]
    for view in catalogue.views.values():
        columns = list(view.columns.values())
        first = columns[0]
        lines += ["", f"struct {view.name} {{"]
        lines += [f"    {type_of(column)} {column.name}; // {column.brief}" for column in columns]
        lines += ["", "    // Calls `put` with what stands before a value in JSON, and the value, of each column in order.",
                  "    template <class Put>", "    void each(Put put) const", "    {"]
        for column in columns:
            before = "{" if column is first else ","
            lines.append(f"        put({quoted(f'{before}{quoted(column.name)}:')}, {column.name});")
        lines += ["    }", "", "    // Calls `read` with the name and the place of each column in order.",
                  "    template <class Read>", "    void fill(Read read)", "    {"]
        lines += [f"        read({quoted(column.name)}, {column.name});" for column in columns]
        lines += ["    }", "", f"    bool operator==(const {view.name} &) const = default;", "};"]
    return "\n".join([*lines, "", "} // namespace view"]) + "\n"


def type_of(column):
    plain = TYPES[column.type]
    return f"std::optional<{plain}>" if column.nullable else plain
