// These commands change the fibre of PON ports from outside.
#include "model/port/fibre.h"
#include "control/sets.h"
#include "model/olt/light.h"
#include "model/plant/fibre.h"

namespace ponsim
{
namespace
{

// Makes each branch of the set lose so much more than an undamaged one.
template <class Loss>
Plan damage(const Olt &olt, std::span<const std::string> words, Loss loss_of)
{
    const auto plan_one = [&](const Olt &model, const BranchKey &key) {
        const PonPort &port = *model.port(key.pon_port);
        return set_damage(port, key.branch, loss_of(port, key.branch));
    };
    return plan_each<BranchKey>(olt, control_branches(control_ports(olt, words[0]), words[1]), plan_one);
}

Plan cut(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("cut: expected a PON port, and a branch of its fibre or an ONU");
    return damage(olt, words, [](const PonPort &, uint32_t) { return cut_loss; });
}

Plan mend(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("mend: expected a PON port, and a branch of its fibre or an ONU");
    return damage(olt, words, [](const PonPort &, uint32_t) { return 0; });
}

Plan bend(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3)
        throw ControlError("bend: expected a PON port, a branch of its fibre or an ONU, and decibels");
    const int32_t more = control_decibels(words[2], cut_loss);
    return damage(olt, words, [&](const PonPort &port, uint32_t branch) { return damage_to(port, branch) + more; });
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
