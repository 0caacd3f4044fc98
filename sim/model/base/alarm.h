// An alarm says what is wrong with an ONU or with a PON port.
#pragma once

#include <cstdint>

namespace ponsim
{

enum class Alarm : uint32_t {
    los = 1,           // was online, and now is not ranged, or has no power; or was online or waited, and light is lost
    dying_gasp,        // was rebooted by command, or lost its power
    rejected,          // registers, and is on the black list
    auth_failed,       // is on the fibre, and now is turned away for its LOID
    bias_high,         // of the port: the bias of its laser has risen to the alarm threshold
    power_low,         // of the port: the launch power of its laser has fallen to the alarm threshold
    degraded,          // its light has become so weak that there are bit errors
    rogue,             // of the port: an ONU sends all the time, and blinds it
    deregistered = 10, // was registered, and was deregistered by command, or because bit errors spoilt its MPCPDUs
    receive_overload,  // its light is too strong for the receiver of the port
    onu_los,           // it has lost the light of the OLT, while the port would receive its own
    onu_degraded,      // the light that it receives has become so weak that there are bit errors
    onu_overload,      // the light that it receives is too strong for its receiver
    oam_link_lost,     // bit errors spoilt its OAMPDUs, or those to it, for so long that its OAM link failed
};

inline constexpr uint32_t max_alarm = 15;

} // namespace ponsim
