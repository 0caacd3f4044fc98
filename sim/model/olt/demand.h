// What ONUs want to send and are to be sent, as the OLT and whoever runs the simulation have it, and what a PON port
// has room for.
#pragma once

#include <optional>

#include "model/olt/mpcp.h"
#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

// None while no ONU that is online is bound to the id.
std::optional<Demand> demand_of(const Olt &olt, const PonPort &port, uint32_t onu_id);

// Of a PON port with so many ONUs online: the line rate, less what grants and forward error correction take of it.
Traffic::Capacity capacity_of(const Mpcp &mpcp, uint32_t online);

enum class Direction { up, down };
// An ONU that has arrived at the port wants to send, or is to be sent, so much; none: as it was found.
Plan set_load(const Olt &olt, uint32_t pon_port, const Mac &mac, Direction direction, std::optional<uint32_t> kbits);

inline constexpr uint32_t max_flood = 1488095; // frames a second, which is all that Gigabit Ethernet carries
// An ONU that has arrived at the port sends so many broadcast frames a second beyond its load.
Plan set_flood(const Olt &olt, uint32_t pon_port, const Mac &mac, uint32_t frames);

} // namespace ponsim
