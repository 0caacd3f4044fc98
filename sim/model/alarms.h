// Alarms of ONUs, and of PON ports themselves. An alarm is raised by the change that is its cause, and stays until it
// is cleared.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/olt.h"

namespace ponsim
{

enum class Alarm : uint32_t {
    los = 1,           // was online, and now is not ranged, or has no power; or its light is lost, online or waiting
    dying_gasp,        // was rebooted by command, or lost its power
    rejected,          // registers, and is on the black list
    auth_failed,       // is on the fibre, and now is turned away for its LOID
    bias_high,         // of the port: the bias of its laser has risen to the alarm threshold
    power_low,         // of the port: the launch power of its laser has fallen to the alarm threshold
    degraded,          // its light has become so weak that there are bit errors
    rogue,             // of the port: an ONU sends all the time, and blinds it
    deregistered = 10, // was registered, and was deregistered by command
};

inline constexpr uint32_t max_alarm = 10;

// In the place of an ONU's address, for the alarms of a port.
inline constexpr Mac port_itself{};

bool is_alarm(uint32_t code);
std::string_view name_of(Alarm alarm);
std::string_view severity_of(Alarm alarm); // critical, major or minor

// Once more for this ONU, or for the port itself, at most once in a change.
void raise(const PonPort &port, const Mac &mac, Alarm alarm, Change &change);

} // namespace ponsim
