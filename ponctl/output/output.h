// Where results go, and in which form.
#pragma once

#include <cstdio>
#include <string_view>

namespace ponctl
{

enum class Format {
    table,
    json,
    hex,
    csv // made of the JSON; commands never see it
};

struct Output {
    std::FILE *stream;
    Format format = Format::table;
    bool headings = true;
    bool terminal = false; // tables are fitted to it
    bool colours = false;
};

// What a terminal takes for the start of bold text.
inline constexpr const char *bold = "\033[1m";
// The same for the colour of a word, wherever it stands in a table; null: it has none.
const char *colour_of(std::string_view word);

} // namespace ponctl
