// ONUs have alarms, and so have PON ports. An alarm is raised by the change that is its cause, and stays until it is
// cleared.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/base/alarm.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Alarms of a port have this where alarms of an ONU have its address.
inline constexpr Mac port_itself{};

bool is_alarm(uint32_t code);
std::string_view name_of(Alarm alarm);
std::string_view severity_of(Alarm alarm); // critical, major or minor

// Raises the alarm once more for this ONU, or for the port itself. Call it at most once for each alarm in a change.
void raise(const PonPort &port, const Mac &mac, Alarm alarm, Change &change);

} // namespace ponsim
