// Damage to the branches of a port's fibre is kept by port and branch.
#pragma once

#include <cstdint>

#include "model/kept/family.h"

namespace ponsim
{

struct BranchKey {
    uint32_t pon_port;
    uint32_t branch;

    auto operator<=>(const BranchKey &) const = default;
};

// A fibre that is cut loses more than any receiver tolerates.
inline constexpr int32_t cut_loss = 10000;

struct Damage {
    int32_t loss; // beyond what the branch loses when undamaged, 0.01 dB
};

template <>
struct Family<Damage> {
    static constexpr std::string_view table = "fibre";
    using Key = BranchKey;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"branch", &Key::branch, {0, max_branch}}};
    static constexpr std::tuple value{Column{"loss", &Damage::loss, {1, cut_loss}}};
    static constexpr bool placed = true;
    static constexpr size_t most = max_ports * (max_branch + 1);
};

} // namespace ponsim
