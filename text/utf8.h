// What characters a text has, and which of them a terminal may see.
#pragma once

#include <string>
#include <string_view>

namespace text
{

bool is_utf8(std::string_view text);

// Returns whether the text has control characters of ASCII that are not allowed in it.
bool has_control_characters(std::string_view text, std::string_view allowed = {});

// Returns whether a terminal may see every character of the text: no control character of ASCII or Latin 1, no mark
// that turns the direction of the characters around it, and no byte that is not UTF-8. The `allowed` characters of
// ASCII do no harm where the text is used.
bool is_printable(std::string_view text, std::string_view allowed = {});

// Returns a text that a terminal may see: each byte of a character that it must not see is written as \xNN. Whatever
// comes from elsewhere goes through this function before it is printed for people.
std::string printable(std::string_view text, std::string_view allowed = {});

// Returns a text as above in which the characters beyond ASCII are written as \xNN, too.
std::string printable_ascii(std::string_view text);

} // namespace text
