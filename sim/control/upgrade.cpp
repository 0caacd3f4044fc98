// These commands make upgrades fail from outside.
#include "model/lifecycle/upgrade.h"
#include "control/control.h"

namespace ponsim
{
namespace
{

Plan upgrade_fault(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("upgrade-fault: expected a PON port, an ONU, and on or off");
    const PonPort &port = control_port(olt, words[0]);
    return set_bad_image(olt, port.number, control_onu(port, words[1]), control_switch(words[2]));
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
