// What goes wrong with upgrades from outside.
#include "model/upgrade.h"
#include "control.h"

namespace ponsim
{
namespace
{

Plan upgrade_fault(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("upgrade-fault: expected a PON port, a MAC address, and on or off");
    const auto pon_port = static_cast<uint32_t>(control_number(words[0], 1, olt.ports().size()));
    return set_bad_image(olt, pon_port, control_mac(words[1]), control_switch(words[2]));
}

constexpr Control commands[] = {
    {"upgrade-fault", "PORT MAC on|off", "whether images that the ONU downloads fail verification", upgrade_fault},
};

} // namespace

std::span<const Control> upgrade_controls()
{
    return commands;
}

} // namespace ponsim
