// This file says where results go, and in which form.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace ponctl
{

struct Selection;

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
    const Selection *selection = nullptr;        // which rows and columns of a listing are wanted; null: all
    std::vector<std::string> *columns = nullptr; // receives the names of a listing's columns; null: not wanted
};

// A table has so many cells at most. The largest result of the service has a tenth of them.
inline constexpr size_t most_cells = 1 << 20;
// A table or a document has about so many bytes at most.
inline constexpr size_t most_bytes = size_t{64} << 20;

// A terminal starts bold text with this sequence.
inline constexpr const char *bold = "\033[1m";
// Returns the sequence for the colour of a word, wherever the word stands in a table. Returns null when the word has no
// colour.
const char *colour_of(std::string_view word);

} // namespace ponctl
