// A MAC address is an array of bytes in transmission order.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

namespace ponsim
{

using Mac = std::array<uint8_t, 6>;

inline bool is_zero(const Mac &mac)
{
    return std::ranges::all_of(mac, [](uint8_t byte) { return byte == 0; });
}

// Returns whether an ONU can have the address: it is neither all zero nor a group address.
inline bool is_station(const Mac &mac)
{
    return !is_zero(mac) && !(mac[0] & 1);
}

// Writes the address as six hexadecimal pairs with colons between them.
inline std::string to_text(const Mac &mac)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (uint8_t byte : mac) {
        if (!text.empty()) text += ':';
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

} // namespace ponsim
