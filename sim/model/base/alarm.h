// An alarm says what is wrong with an ONU or with a PON port.
#pragma once

#include <cstdint>

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

} // namespace ponsim
