// An SLA is the bandwidth that an ONU has by contract.
#pragma once

#include <cstdint>

namespace ponsim
{

inline constexpr uint32_t line_rate = 1000000;   // kbit/s, of a PON port in each direction
inline constexpr uint32_t uplink_rate = 1000000; // kbit/s, of a GE port in each direction
inline constexpr uint32_t max_priority = 7;
inline constexpr uint32_t max_weight = 100;

// This is an upstream service level agreement. Bandwidths are in kbit/s.
struct Sla {
    uint32_t fixed = 0;
    uint32_t assured = 0;
    uint32_t maximum = 0;
    uint32_t priority = 0;
    uint32_t weight = 0;

    bool operator==(const Sla &) const = default;
};

// Returns whether there can be such an SLA: what is fixed and assured is within the maximum.
constexpr bool is_good(const Sla &sla)
{
    if (sla.maximum < 1 || sla.maximum > line_rate) return false;
    if (sla.fixed > sla.maximum || sla.assured > sla.maximum - sla.fixed) return false;
    return sla.priority <= max_priority && sla.weight >= 1 && sla.weight <= max_weight;
}

// An ONU without a stored SLA has this one.
inline constexpr Sla default_sla{.fixed = 0, .assured = 0, .maximum = line_rate, .priority = 0, .weight = 1};

} // namespace ponsim
