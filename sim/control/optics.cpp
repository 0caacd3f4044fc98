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

constexpr Control commands[] = {
    {"age", "CAGE HOURS", "makes the laser in an SFP cage older; cage N is that of PON port N", age},
};

} // namespace

std::span<const Control> optics_controls()
{
    return commands;
}

} // namespace ponsim
