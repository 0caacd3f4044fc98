// MAC addresses, in transmission order.
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

// Whether one ONU can have the address: not all zero, and no group address.
inline bool is_station(const Mac &mac)
{
    return !is_zero(mac) && !(mac[0] & 1);
}

// Six hexadecimal pairs with colons.
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
