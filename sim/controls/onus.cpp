// What happens to ONUs from outside.
#include "control.h"
#include "model/device.h"
#include "model/loops.h"
#include "model/registration.h"

namespace ponsim
{
namespace
{

uint32_t pon_port(const Olt &olt, const std::string &word)
{
    return static_cast<uint32_t>(control_number(word, 1, olt.ports().size()));
}

Plan power(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("power: expected a PON port, a MAC address, and on or off");
    return set_power(olt, pon_port(olt, words[0]), control_mac(words[1]), control_switch(words[2]));
}

Plan loop(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 4) throw ControlError("loop: expected a PON port, a MAC address, a UNI port, and on or off");
    const auto uni = static_cast<uint32_t>(control_number(words[2], 1, max_unis));
    return set_loop(olt, {pon_port(olt, words[0]), control_mac(words[1]), uni}, control_switch(words[3]));
}

constexpr Control commands[] = {
    {"power", "PORT MAC on|off", "an ONU that has arrived at a PON port has power, or loses it", power},
    {"loop", "PORT MAC UNI on|off", "there is a loop behind a UNI port of a bound ONU, or none", loop},
};

} // namespace

std::span<const Control> onu_controls()
{
    return commands;
}

} // namespace ponsim
