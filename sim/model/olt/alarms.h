// Alarms of ONUs, and of PON ports themselves. An alarm is raised by the change that is its cause, and stays until it
// is cleared.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/base/alarm.h"
#include "model/olt/olt.h"

namespace ponsim
{

// In the place of an ONU's address, for the alarms of a port.
inline constexpr Mac port_itself{};

bool is_alarm(uint32_t code);
std::string_view name_of(Alarm alarm);
std::string_view severity_of(Alarm alarm); // critical, major or minor

// Once more for this ONU, or for the port itself, at most once in a change.
void raise(const PonPort &port, const Mac &mac, Alarm alarm, Change &change);

} // namespace ponsim
