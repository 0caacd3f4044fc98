// These commands make upgrades fail from outside.
#include "model/lifecycle/upgrade.h"
#include "control/sets.h"

namespace ponsim
{
namespace
{

Plan upgrade_fault(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("upgrade-fault: expected a PON port, an ONU, and on or off");
    const bool bad = control_switch(words[2]);
    return plan_each<OnuAtPort>(
        olt, control_onus(control_ports(olt, words[0]), words[1]),
        [&](const Olt &model, const OnuAtPort &onu) { return set_bad_image(model, onu.pon_port, onu.mac, bad); });
}

constexpr Control commands[] = {
    {"upgrade-fault", "PORT ONU on|off", "whether images that the ONU downloads fail verification", upgrade_fault},
};

} // namespace

std::span<const Control> upgrade_controls()
{
    return commands;
}

} // namespace ponsim
