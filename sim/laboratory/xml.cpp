#include "laboratory/xml.h"

#include <algorithm>

#include "text/utf8.h"

namespace ponsim
{
namespace
{

constexpr std::string_view replacement = "\xef\xbf\xbd"; // U+FFFD

// Takes the first character off the text. Returns the replacement for a byte with which no character begins.
std::string_view take_character(std::string_view &text)
{
    constexpr size_t longest = 4;
    for (size_t length = 1; length <= std::min(longest, text.size()); ++length) {
        const std::string_view character = text.substr(0, length);
        if (!text::is_utf8(character)) continue;
        text.remove_prefix(length);
        return character;
    }
    text.remove_prefix(1);
    return replacement;
}

std::string escaped(std::string_view character)
{
    if (character == "&") return "&amp;";
    if (character == "<") return "&lt;";
    if (character == ">") return "&gt;";
    if (character == "\"") return "&quot;";
    // An attribute would have a space in the place of these.
    if (character == "\t" || character == "\n" || character == "\r")
        return "&#" + std::to_string(character.front()) + ';';
    const bool is_none = character == "\xef\xbf\xbe" || character == "\xef\xbf\xbf"; // U+FFFE and U+FFFF
    return std::string(is_none || text::has_control_characters(character, "\x7f") ? replacement : character);
}

} // namespace

std::string escaped_xml(std::string_view text)
{
    std::string all;
    while (!text.empty())
        all += escaped(take_character(text));
    return all;
}

} // namespace ponsim
