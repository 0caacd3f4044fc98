// A MAC address is an array of bytes in transmission order.
#pragma once

#include <algorithm>
#include <cstdint>

#include "text/hex.h"

namespace ponsim
{

using text::Mac;

inline bool is_zero(const Mac &mac)
{
    return std::ranges::all_of(mac, [](uint8_t byte) { return byte == 0; });
}

// Returns whether an ONU can have the address: it is neither all zero nor a group address.
inline bool is_station(const Mac &mac)
{
    return !is_zero(mac) && !(mac[0] & 1);
}

} // namespace ponsim
