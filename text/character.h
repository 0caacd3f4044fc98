// This file takes a text apart into the characters that a terminal sees.
#pragma once

#include <cstddef>
#include <string_view>

namespace text
{

// A Character is the first character of a text.
struct Character {
    size_t length; // in bytes; 1 when no character of UTF-8 begins there
    char32_t code; // the byte itself when no character of UTF-8 begins there
    bool is_utf8;  // a character of UTF-8 begins there
    bool shown;    // a terminal may see it
};

// Returns whether a terminal would take a character for a command, or turn the direction of the characters around it.
constexpr bool is_harmful(char32_t code)
{
    const bool is_control = code < ' ' || (code >= 0x7f && code <= 0x9f);
    const bool turns_direction = code == 0x061c || code == 0x200e || code == 0x200f ||
                                 (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
    return is_control || turns_direction;
}

// Returns the first character of a text that is not empty.
constexpr Character first_character(std::string_view text)
{
    constexpr char32_t least_code[] = {0, 0, 0x80, 0x800, 0x10000}; // by the length in bytes
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80) return {1, first, true, !is_harmful(first)};
    const Character none{1, first, false, false};
    const size_t length = first >> 5 == 0x06 ? 2 : first >> 4 == 0x0e ? 3 : first >> 3 == 0x1e ? 4 : 0;
    if (length == 0 || text.size() < length) return none;
    char32_t code = first & (0x7fu >> length);
    for (size_t at = 1; at < length; ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >> 6 != 0x02) return none;
        code = code << 6 | (byte & 0x3fu);
    }
    const bool is_surrogate = code >= 0xd800 && code <= 0xdfff;
    if (code < least_code[length] || code > 0x10ffff || is_surrogate) return none;
    return {length, code, true, !is_harmful(code)};
}

} // namespace text
