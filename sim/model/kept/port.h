// This record says how a PON port is set up.
#pragma once

#include <cstdint>

#include "model/base/limits.h"
#include "model/kept/family.h"

namespace ponsim
{

// RangingLimits are the distances of the nearest and the farthest ONU that a port ranges, in m.
struct RangingLimits {
    uint32_t min = 0;
    uint32_t max = max_distance;

    bool contain(uint32_t distance) const { return distance >= min && distance <= max; }
    bool operator==(const RangingLimits &) const = default;
};

struct PortRecord {
    RangingLimits limits = {};
    uint32_t auth_mode = 0;
};

template <>
struct Family<PortRecord> {
    static constexpr std::string_view table = "port";
    static constexpr AllColumns configured = all_columns;
    using Key = uint32_t;
    static constexpr std::tuple key{PortItself{}};
    static constexpr std::tuple value{
        InnerColumns{&PortRecord::limits, std::tuple{Column{"min_distance", &RangingLimits::min, {0, max_distance}},
                                                     Column{"max_distance", &RangingLimits::max, {0, max_distance}}}},
        Column{"auth_mode", &PortRecord::auth_mode, {0, 3}}};
    static constexpr bool placed = true;
    static constexpr size_t most = max_ports;

    struct Check {
        const char *operator()(uint32_t, Key, const PortRecord &port) const
        {
            return port.limits.min <= port.limits.max ? nullptr : "min_distance is beyond max_distance";
        }
    };
};

} // namespace ponsim
