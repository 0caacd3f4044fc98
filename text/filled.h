// Text in lines of a terminal's width.
#pragma once

#include <string>
#include <string_view>

namespace text
{

constexpr size_t page_width = 80;

// Words filled into lines of the page, which start with `indent` spaces, the first one with what stands there already.
std::string filled(std::string start, std::string_view text, size_t indent);
std::string filled(std::string_view text, size_t indent);

} // namespace text
