// These commands make things happen to optical modules from outside.
#include "model/port/optics.h"
#include "control/control.h"

namespace ponsim
{
namespace
{

Plan age(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("age: expected a cage and hours");
    const auto cage = static_cast<uint32_t>(control_number(words[0], 1, olt.modules().size()));
    return age_laser(olt, cage, static_cast<uint32_t>(control_number(words[1], 0, max_laser_hours)));
}

Plan dim(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("dim: expected a PON port, and decibels or off");
    const PonPort &port = control_port(olt, words[0]);
    return dim_laser(olt, port.number, words[1] == "off" ? 0 : control_decibels(words[1], most_dimmed));
}

constexpr Control commands[] = {
    {"age", "CAGE HOURS", "makes the laser in an SFP cage older; cage N is that of PON port N", age},
    {"dim", "PORT DB|off", "the laser of a PON port's module launches so much less light, or as much as it did", dim},
};

} // namespace

std::span<const Control> optics_controls()
{
    return commands;
}

} // namespace ponsim
