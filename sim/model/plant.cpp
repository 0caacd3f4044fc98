#include "model/plant.h"

#include <algorithm>

#include "bsp_pon.h"
#include "model/olt.h"

namespace ponsim
{

int32_t path_loss(const PonPort &port, const Arrival &arrival)
{
    int32_t loss = arrival.loss + fibre_loss(arrival.distance);
    if (port.damage.empty()) return loss;
    for (std::optional<uint32_t> branch = arrival.branch; branch; branch = port.branches.at(*branch).parent)
        loss += damage_to(port, *branch);
    return loss;
}

int32_t damage_to(const PonPort &port, uint32_t branch)
{
    const auto found = port.damage.find(branch);
    return found == port.damage.end() ? 0 : found->second;
}

Plan set_damage(const PonPort &port, uint32_t branch, int32_t loss)
{
    return {BSP_OK, {.fibre = {{port.number, branch, std::min(loss, cut_loss)}}}};
}

} // namespace ponsim
