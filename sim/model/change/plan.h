// A function that reads the OLT returns a Plan, which says what is to change, or why nothing changes.
#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>

#include "model/change/change.h"

namespace ponsim
{

// OnuIds are ids of one port: of ONUs, or of entries of its blacklist.
using OnuIds = std::bitset<onus_per_port>;

struct Plan {
    uint32_t status;
    Change change = {};  // empty unless the status is BSP_OK
    std::string of = {}; // what was refused of a set that was wanted
};

// Returns the lowest id from 1 on that is not taken. Id 0 is used last, because it means "none" to several commands.
inline std::optional<uint32_t> lowest_free(const OnuIds &taken)
{
    for (uint32_t id = 1; id < onus_per_port; ++id)
        if (!taken[id]) return id;
    if (!taken[0]) return 0;
    return std::nullopt;
}

// Returns the ids that are in use.
template <class Entries>
OnuIds ids_of(const Entries &entries)
{
    OnuIds ids;
    for (uint32_t id = 0; id < onus_per_port; ++id)
        ids[id] = entries[id].has_value();
    return ids;
}

} // namespace ponsim
