// What a function that reads the OLT says is to change, or why nothing is.
#pragma once

#include <bitset>
#include <cstdint>
#include <optional>

#include "model/olt/change.h"

namespace ponsim
{

// Ids of one port: of ONUs, or of entries of its black list.
using OnuIds = std::bitset<onus_per_port>;

struct Plan {
    uint32_t status;
    Change change = {}; // empty unless the status is BSP_OK
};

// The lowest id from 1 on that is not taken; id 0 is used last, because to several commands it means "none".
inline std::optional<uint32_t> lowest_free(const OnuIds &taken)
{
    for (uint32_t id = 1; id < onus_per_port; ++id)
        if (!taken[id]) return id;
    if (!taken[0]) return 0;
    return std::nullopt;
}

// The ids that are in use.
template <class Entries>
OnuIds ids_of(const Entries &entries)
{
    OnuIds ids;
    for (uint32_t id = 0; id < onus_per_port; ++id)
        ids[id] = entries[id].has_value();
    return ids;
}

} // namespace ponsim
