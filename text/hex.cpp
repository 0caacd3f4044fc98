#include "text/hex.h"

#include <algorithm>

#include "text/number.h"
#include "text/words.h"

namespace text
{

namespace
{

void put_digits(char *at, uint8_t byte)
{
    constexpr char digits[] = "0123456789abcdef";
    at[0] = digits[byte >> 4];
    at[1] = digits[byte & 15];
}

} // namespace

std::string to_hex(std::span<const uint8_t> bytes)
{
    std::string text(2 * bytes.size(), '0');
    for (size_t index = 0; index < bytes.size(); ++index)
        put_digits(&text[2 * index], bytes[index]);
    return text;
}

std::optional<std::vector<uint8_t>> from_hex(std::string_view digits)
{
    if (digits.size() % 2 != 0) return std::nullopt;
    std::vector<uint8_t> bytes;
    bytes.reserve(digits.size() / 2);
    for (; !digits.empty(); digits.remove_prefix(2)) {
        const auto byte = to_number<uint8_t>(digits.substr(0, 2), 16);
        if (!byte) return std::nullopt;
        bytes.push_back(*byte);
    }
    return bytes;
}

std::string mac_text(std::span<const uint8_t, 6> mac)
{
    std::string text(3 * mac.size() - 1, ':');
    for (size_t index = 0; index < mac.size(); ++index)
        put_digits(&text[3 * index], mac[index]);
    return text;
}

std::optional<Mac> to_mac(std::string_view text)
{
    for (const char separator : {':', '-', '.'}) {
        const std::vector<std::string> groups = split(text, separator);
        const size_t width = groups.size() == 6 ? 2 : groups.size() == 3 && separator == '.' ? 4 : 0;
        if (width == 0 || std::ranges::any_of(groups, [&](const auto &group) { return group.size() != width; }))
            continue;
        Mac mac;
        const auto bytes = from_hex(join(groups, ""));
        if (!bytes) return std::nullopt;
        std::ranges::copy(*bytes, mac.begin());
        return mac;
    }
    return std::nullopt;
}

} // namespace text
