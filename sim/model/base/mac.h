// MAC addresses, in transmission order.
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

// Whether one ONU can have the address: not all zero, and no group address.
inline bool is_station(const Mac &mac)
{
    return !is_zero(mac) && !(mac[0] & 1);
}

} // namespace ponsim
