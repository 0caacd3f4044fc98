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
    if (words.size() != 2) throw ControlError("cut: expected PON ports, and branches of their fibre or ONUs");
    return damage(olt, words, [](const PonPort &, uint32_t) { return cut_loss; });
}

Plan mend(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("mend: expected PON ports, and branches of their fibre or ONUs");
    return damage(olt, words, [](const PonPort &, uint32_t) { return 0; });
}

Plan bend(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3)
        throw ControlError("bend: expected PON ports, branches of their fibre or ONUs, and decibels");
    const int32_t more = control_decibels(words[2], cut_loss);
    return damage(olt, words, [&](const PonPort &port, uint32_t branch) { return damage_to(port, branch) + more; });
}

constexpr Control commands[] = {
    {"cut", "PORTS BRANCHES", "cuts branches of PON ports' fibre: feeder, drop-1, or those of ONUs", cut},
    {"mend", "PORTS BRANCHES", "mends what was cut or bent", mend},
    {"bend", "PORTS BRANCHES DB", "bends branches, which lose so much more light", bend},
};

} // namespace

std::span<const Control> fibre_controls()
{
    return commands;
}

} // namespace ponsim
