// Texts as results.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/output.h"

namespace ponctl
{

// A text with everything that a terminal could take for a command written as \xNN.
std::string printable(std::string_view text);

// A text of any number of lines. What a terminal could take for a command is written as printable() does.
void print_text(const Output &output, std::string_view text);

// The contents of a file: a text where they are one throughout, else bytes. In JSON a text, or hexadecimal digits.
void print_content(const Output &output, std::span<const uint8_t> bytes);

// A UsageError where bytes are wanted of what the catalogue says.
void refuse_hex(const Output &output);

// Rows of what the catalogue says under their names, which JSON has in lower case.
void print_texts(const Output &output, const std::vector<std::string> &names,
                 const std::vector<std::vector<std::string>> &rows);

} // namespace ponctl
