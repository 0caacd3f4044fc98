// This file says why light is lost, weak or too strong, and whether all ONUs of a port lost it for one cause.
#pragma once

#include <optional>

#include "model/base/direction.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Returns why the light of this direction is not good.
AlarmReason light_reason(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction);

// Returns the reason that names the ONU which blinds the port.
AlarmReason rogue_reason(const PonPort &port);

// Returns why the ONU and its port do not hear each other.
AlarmReason loss_reason(const Olt &olt, const PonPort &port, const Arrival &arrival);

// Returns the reason that all running ONUs of the port have in common for not being heard. Returns none while one of
// them is heard, when their reasons differ, and when a rogue ONU blinds the port, which has its own alarm.
std::optional<AlarmReason> common_loss(const Olt &olt, const PonPort &port);

} // namespace ponsim
