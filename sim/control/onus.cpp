// These commands make things happen to ONUs from outside.
#include "control/control.h"
#include "model/lifecycle/registration.h"
#include "model/olt/demand.h"
#include "model/olt/light_watch.h"
#include "model/plant/device.h"
#include "model/port/loops.h"
#include "model/port/optics.h"
#include "model/port/sla.h"

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

Plan load(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 4 || (words[2] != "up" && words[2] != "down"))
        throw ControlError("load: expected a PON port, an ONU, up or down, and kbit/s or default");
    const PonPort &port = control_port(olt, words[0]);
    std::optional<uint32_t> kbits;
    if (words[3] != "default") kbits = static_cast<uint32_t>(control_number(words[3], 0, line_rate));
    return set_load(olt, port.number, control_onu(port, words[1]), words[2] == "up" ? Direction::up : Direction::down,
                    kbits);
}

Plan flood(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("flood: expected a PON port, an ONU, and broadcast frames a second");
    const PonPort &port = control_port(olt, words[0]);
    return set_flood(olt, port.number, control_onu(port, words[1]),
                     static_cast<uint32_t>(control_number(words[2], 0, max_flood)));
}

constexpr Control commands[] = {
    {"power", "PORT ONU on|off", "an ONU that has arrived at a PON port has power, or loses it", power},
    {"loop", "PORT ONU UNI on|off", "there is a loop behind a UNI port of a bound ONU, or none", loop},
    {"age-onu", "PORT ONU HOURS", "makes the laser of an ONU older", age},
    {"rogue", "PORT ONU on|off", "whether an ONU sends all the time, and blinds its port", rogue},
    {"load", "PORT ONU up|down KBITS|default", "what an ONU wants to send, or is to be sent", load},
    {"flood", "PORT ONU FRAMES", "broadcast frames a second that an ONU sends beyond its load; 0 ends it", flood},
};

} // namespace

std::span<const Control> onu_controls()
{
    return commands;
}

} // namespace ponsim
