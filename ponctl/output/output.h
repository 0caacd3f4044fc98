// This file says where results go, and in which form.
#pragma once

#include <cstdio>
#include <string_view>

namespace ponctl
{

enum class Format {
    table,
    json,
    hex,
    csv // made of the JSON; commands never get it
};

struct Output {
    std::FILE *stream;
    Format format = Format::table;
    bool headings = true;
    bool terminal = false; // tables are fitted to its width
    bool colours = false;
};

// A terminal starts bold text with this sequence.
inline constexpr const char *bold = "\033[1m";
// Returns the sequence for the colour of a word, wherever the word stands in a table. Returns null when the word has no
// colour.
const char *colour_of(std::string_view word);

} // namespace ponctl
