// This file says what ONUs want to send and are to be sent, and what a PON port has room for. What they want can be
// changed by the OLT and by whoever runs the simulation.
#pragma once

#include <optional>

#include "model/base/direction.h"
#include "model/change/plan.h"
#include "model/olt/mpcp.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Returns no demand while no ONU that is online is bound to the id.
std::optional<Demand> demand_of(const Olt &olt, const PonPort &port, uint32_t onu_id);

// Returns which frames of an ONU with this record arrive with bit errors, or not at all.
Errors errors_of(const OnuRecord &record);

// Returns the room of a PON port with so many ONUs online: the line rate, less what grants, the messages of multi-point
// control and forward error correction take of it.
Traffic::Capacity capacity_of(const Mpcp &mpcp, uint32_t online);
// Returns how much of the upstream room can be promised to so many ONUs, in kbit/s of the longest frames.
uint32_t admissible(const Mpcp &mpcp, uint32_t onus);

// Makes an ONU that has arrived at the port want to send, or be sent, so much. Without a number it has the load that it
// was found with.
Plan set_load(const Olt &olt, uint32_t pon_port, const Mac &mac, Direction direction, std::optional<uint32_t> kbits);

// Makes an ONU that has arrived at the port send so many broadcast frames a second beyond its load.
Plan set_flood(const Olt &olt, uint32_t pon_port, const Mac &mac, uint32_t frames);

} // namespace ponsim
