// What happens to ONUs from outside.
#include "control.h"
#include "model/device.h"
#include "model/light_watch.h"
#include "model/loops.h"
#include "model/optics.h"
#include "model/registration.h"

namespace ponsim
{
namespace
{

Plan power(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("power: expected a PON port, an ONU, and on or off");
    const PonPort &port = control_port(olt, words[0]);
    return set_power(olt, port.number, control_onu(port, words[1]), control_switch(words[2]));
}

Plan loop(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 4) throw ControlError("loop: expected a PON port, an ONU, a UNI port, and on or off");
    const PonPort &port = control_port(olt, words[0]);
    const auto uni = static_cast<uint32_t>(control_number(words[2], 1, max_unis));
    return set_loop(olt, {port.number, control_onu(port, words[1]), uni}, control_switch(words[3]));
}

Plan age(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("age-onu: expected a PON port, an ONU, and hours");
    const PonPort &port = control_port(olt, words[0]);
    return age_onu(olt, port.number, control_onu(port, words[1]),
                   static_cast<uint32_t>(control_number(words[2], 0, max_laser_hours)));
}

Plan rogue(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("rogue: expected a PON port, an ONU, and on or off");
    const PonPort &port = control_port(olt, words[0]);
    return set_rogue(olt, port.number, control_onu(port, words[1]), control_switch(words[2]));
}

constexpr Control commands[] = {
    {"power", "PORT ONU on|off", "an ONU that has arrived at a PON port has power, or loses it", power},
    {"loop", "PORT ONU UNI on|off", "there is a loop behind a UNI port of a bound ONU, or none", loop},
    {"age-onu", "PORT ONU HOURS", "makes the laser of an ONU older", age},
    {"rogue", "PORT ONU on|off", "whether an ONU sends all the time, and blinds its port", rogue},
};

} // namespace

std::span<const Control> onu_controls()
{
    return commands;
}

} // namespace ponsim
