// What characters a text has.
#pragma once

#include <string_view>

namespace text
{

bool is_utf8(std::string_view text);

// Returns whether the text has control characters of ASCII that are not allowed in it.
bool has_control_characters(std::string_view text, std::string_view allowed = {});

} // namespace text
