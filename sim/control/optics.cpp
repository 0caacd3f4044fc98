// These commands make things happen to optical modules from outside.
#include "model/port/optics.h"
#include "control/sets.h"

namespace ponsim
{
namespace
{

Plan age(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("age: expected a cage and hours");
    const auto hours = static_cast<uint32_t>(control_number(words[1], 0, max_laser_hours));
    return plan_each<uint32_t>(olt, control_numbers(words[0], 1, static_cast<uint32_t>(olt.modules().size())),
                               [&](const Olt &model, uint32_t cage) { return age_laser(model, cage, hours); });
}

Plan dim(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("dim: expected a PON port, and decibels or off");
    const int32_t less = words[1] == "off" ? 0 : control_decibels(words[1], most_dimmed);
    return plan_each<uint32_t>(olt, control_numbers(words[0], 1, static_cast<uint32_t>(olt.ports().size())),
                               [&](const Olt &model, uint32_t pon_port) { return dim_laser(model, pon_port, less); });
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
