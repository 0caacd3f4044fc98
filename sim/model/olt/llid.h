// These settings say how the OLT treats the logical link of an ONU id.
#pragma once

#include <cstdint>

#include "model/change/plan.h"

namespace ponsim
{

class Olt;

enum class Frames : uint32_t { learned, forwarded, dropped };

struct LlidBehavior {
    Frames frames = Frames::learned;
    uint32_t mac_limit = 0; // 0: no limit, as in the rates
    uint32_t broadcast_rate = 0;
    uint32_t multicast_rate = 0;
    uint32_t unknown_rate = 0;
    uint32_t over_limit = 0; // frames from addresses that the limit keeps out: 0 forwarded, 1 dropped
    uint32_t isolated = 0;

    bool operator==(const LlidBehavior &) const = default;
};

constexpr uint32_t to_llid(uint32_t onu_id)
{
    return onu_id + 1;
}
constexpr uint32_t to_onu_id(uint32_t llid)
{
    return llid - 1;
}

// Returns whether there can be such a behaviour.
bool is_good(const LlidBehavior &behavior);

LlidBehavior llid_behavior(const Olt &olt, uint32_t pon_port, uint32_t llid);
Plan set_llid_behavior(const Olt &olt, uint32_t pon_port, uint32_t llid, const LlidBehavior &behavior);

} // namespace ponsim
