// An alarm says what is wrong with an ONU, with a PON port, or with an uplink.
#pragma once

#include <cstdint>

namespace ponsim
{

enum class Alarm : uint32_t {
    los = 1,           // was online, and now is not ranged, or has no power; or was online or waited, and light is lost
    dying_gasp,        // was rebooted by command, or lost its power
    rejected,          // registers, and is on the blacklist
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
    port_los,          // of the port: it hears none of its ONUs any more, for one cause that they have in common
    transmitter_off,   // of the port: the laser of its module was switched off
    uni_loop,          // loop detection has shut one of its UNI ports
    uplink_down,       // of the OLT: the link of an uplink is down
    wrong_port,        // is on the fibre, and is bound at another port
    same_loid,         // is kept out because another ONU of its port is let in with the same LOID
    same_mac,          // is on the fibre, as is another ONU with the same address at another port
};

inline constexpr uint32_t max_alarm = 22;

// Returns whether the code is that of an alarm. No alarm has the one between `rogue` and `deregistered`.
constexpr bool is_alarm(uint32_t code)
{
    return code >= 1 && code <= max_alarm && code != static_cast<uint32_t>(Alarm::rogue) + 1;
}

// The cause says why an alarm was raised.
enum class AlarmCause : uint32_t {
    unknown,     // it was raised before causes were kept
    fibre,       // a branch of the fibre loses more light than it should
    transmitter, // the laser of the port is off, or launches too little
    laser,       // light is too weak or too strong without damage to the fibre, as lasers age and warm up
    rogue,       // an ONU sends all the time
    port_los,    // the port hears none of its ONUs
    power,       // the power was switched off
    reboot,      // it was rebooted by command
    command,     // somebody ordered it
    distance,    // the ONU is outside the ranging limits
    black_list,  // the ONU is on the blacklist
    loid,        // the ONU's LOID is not accepted
    bit_errors,  // messages were spoilt on the fibre
    age,         // the laser is old
    loop,        // frames come back through a UNI port
    phy,         // the PHY is set so that it has no link
    test,        // a test raised it
    elsewhere,   // the ONU is bound at another port
    same_loid,   // another ONU has the same LOID
    same_mac,    // another ONU has the same address
};

inline constexpr uint32_t max_alarm_cause = 19;

} // namespace ponsim
