// This file lays text out in lines of a terminal's width.
#pragma once

#include <string>
#include <string_view>

namespace text
{

constexpr size_t page_width = 80;

// Fills words into lines of the page's width. The lines start with `indent` spaces; the first line continues behind
// `start`.
std::string filled(std::string start, std::string_view text, size_t indent);
std::string filled(std::string_view text, size_t indent);

} // namespace text
