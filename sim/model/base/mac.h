// A MAC address is an array of bytes in transmission order.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <map>

#include "text/hex.h"

namespace ponsim
{

using text::Mac;

inline bool is_zero(const Mac &mac)
{
    return std::ranges::all_of(mac, [](uint8_t byte) { return byte == 0; });
}

// This is the order of addresses as arrays. They are compared as numbers, because whoever counts the ONUs of a port
// compares some thousands of them, and each comparison of bytes is a call of the C library.
struct MacOrder {
    bool operator()(const Mac &left, const Mac &right) const { return number_of(left) < number_of(right); }

private:
    static uint64_t number_of(const Mac &mac)
    {
        uint32_t high = 0;
        uint16_t low = 0;
        std::memcpy(&high, mac.data(), sizeof high);
        std::memcpy(&low, mac.data() + sizeof high, sizeof low);
        if constexpr (std::endian::native == std::endian::little) {
            high = __builtin_bswap32(high);
            low = __builtin_bswap16(low);
        }
        return uint64_t{high} << 16 | low;
    }
};

template <class Value>
using ByMac = std::map<Mac, Value, MacOrder>;

// Returns whether an ONU can have the address: it is neither all zero nor a group address.
inline bool is_station(const Mac &mac)
{
    return !is_zero(mac) && !(mac[0] & 1);
}

} // namespace ponsim
