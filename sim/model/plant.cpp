#include "model/plant.h"

#include "model/olt.h"

namespace ponsim
{

int32_t path_loss(const PonPort &port, const Arrival &arrival)
{
    int32_t loss = arrival.loss + fibre_loss(arrival.distance);
    if (port.damage.empty()) return loss;
    for (std::optional<uint32_t> branch = arrival.branch; branch; branch = port.branches.at(*branch).parent)
        if (const auto found = port.damage.find(*branch); found != port.damage.end()) loss += found->second;
    return loss;
}

} // namespace ponsim
