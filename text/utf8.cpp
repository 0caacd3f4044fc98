#include "text/utf8.h"

#include <algorithm>

#include "text/character.h"
#include "text/hex.h"

namespace text
{
namespace
{

void append_escaped(std::string_view bytes, std::string &text)
{
    for (const char c : bytes) {
        const auto byte = static_cast<uint8_t>(c);
        text.append("\\x").append(to_hex({&byte, 1}));
    }
}

bool is_allowed(const Character &character, std::string_view allowed)
{
    return character.shown ||
           (character.code < 0x80 && allowed.find(static_cast<char>(character.code)) != allowed.npos);
}

template <class MayPass>
std::string escaped(std::string_view text, MayPass may_pass)
{
    std::string safe;
    while (!text.empty()) {
        const Character character = first_character(text);
        const std::string_view bytes = text.substr(0, character.length);
        if (may_pass(character))
            safe.append(bytes);
        else
            append_escaped(bytes, safe);
        text.remove_prefix(character.length);
    }
    return safe;
}

} // namespace

bool is_utf8(std::string_view text)
{
    while (true) {
        const auto beyond_ascii = std::ranges::find_if(text, [](char character) { return character & 0x80; });
        text.remove_prefix(static_cast<size_t>(beyond_ascii - text.begin()));
        if (text.empty()) return true;
        const Character character = first_character(text);
        if (!character.is_utf8) return false;
        text.remove_prefix(character.length);
    }
}

bool has_control_characters(std::string_view text, std::string_view allowed)
{
    return std::ranges::any_of(text, [allowed](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return (byte < ' ' || byte == 0x7f) && allowed.find(character) == allowed.npos;
    });
}

bool is_printable(std::string_view text, std::string_view allowed)
{
    while (!text.empty()) {
        const Character character = first_character(text);
        if (!is_allowed(character, allowed)) return false;
        text.remove_prefix(character.length);
    }
    return true;
}

std::string printable(std::string_view text, std::string_view allowed)
{
    return escaped(text, [allowed](const Character &character) { return is_allowed(character, allowed); });
}

std::string printable_ascii(std::string_view text)
{
    return escaped(text, [](const Character &character) { return character.shown && character.code < 0x80; });
}

} // namespace text
