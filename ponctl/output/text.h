// This file prints texts as results.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/output.h"

namespace ponctl
{

// Prints a text of any number of lines. What a terminal must not see is written as text::printable() does.
void print_text(const Output &output, std::string_view text);
// As above, for a text that is one line, whatever characters it has.
void print_line(const Output &output, std::string_view line);

// Prints the contents of a file: as a text if the whole file is text, otherwise as bytes. In JSON it is a text, or
// hexadecimal digits.
void print_content(const Output &output, std::span<const uint8_t> bytes);

// Returns the time of day in Coordinated Universal Time: 2026-11-22T18:30:00Z.
std::string time_text();

// Throws a UsageError when bytes are wanted of what has none. The error names it.
void refuse_hex(const Output &output, std::string_view what);

// Prints rows of a description from the catalogue under their names. JSON has the names in lower case.
void print_texts(const Output &output, const std::vector<std::string> &names,
                 const std::vector<std::vector<std::string>> &rows);

} // namespace ponctl
