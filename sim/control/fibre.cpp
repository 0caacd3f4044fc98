// These commands change the fibre of PON ports from outside.
#include <algorithm>

#include "control/control.h"
#include "model/olt/light.h"
#include "model/plant/fibre.h"
#include "model/port/fibre.h"

namespace ponsim
{
namespace
{

struct BranchOfPort {
    const PonPort &port;
    uint32_t branch;
};

// Returns a branch by its name, or by the ONU at its end.
BranchOfPort branch_of(const Olt &olt, std::span<const std::string> words)
{
    const PonPort &port = control_port(olt, words[0]);
    const auto named = std::ranges::find(port.branches, words[1], &Branch::name);
    if (named != port.branches.end()) return {port, static_cast<uint32_t>(named - port.branches.begin())};
    try {
        if (const Arrival *arrival = port.arrived(control_onu(port, words[1]))) return {port, arrival->branch};
    } catch (const ControlError &) {
        // The word is neither a branch nor an ONU. The error below says so.
    }
    throw ControlError(words[1] + ": expected a branch of PON port " + std::to_string(port.number) +
                       ", as feeder or drop-1, or the MAC address or name of an ONU that has arrived there");
}

Plan cut(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("cut: expected a PON port, and a branch of its fibre or an ONU");
    const auto [port, branch] = branch_of(olt, words);
    return set_damage(port, branch, cut_loss);
}

Plan mend(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("mend: expected a PON port, and a branch of its fibre or an ONU");
    const auto [port, branch] = branch_of(olt, words);
    return set_damage(port, branch, 0);
}

Plan bend(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3)
        throw ControlError("bend: expected a PON port, a branch of its fibre or an ONU, and decibels");
    const auto [port, branch] = branch_of(olt, words);
    return set_damage(port, branch, damage_to(port, branch) + control_decibels(words[2], cut_loss));
}

constexpr Control commands[] = {
    {"cut", "PORT BRANCH", "cuts a branch of a PON port's fibre: feeder, drop-1, or that of an ONU", cut},
    {"mend", "PORT BRANCH", "mends what was cut or bent", mend},
    {"bend", "PORT BRANCH DB", "bends a branch, which loses so much more light", bend},
};

} // namespace

std::span<const Control> fibre_controls()
{
    return commands;
}

} // namespace ponsim
