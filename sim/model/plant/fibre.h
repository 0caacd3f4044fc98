// This file says how much light is lost on its way through fibre, splitters and connectors.
#pragma once

#include <cstdint>

namespace ponsim
{

// All losses are in 0.01 dB.

// A connector pair loses the 0.25 dB with which link budgets are planned.
inline constexpr int32_t connector_loss = 25;
// A fibre that is cut loses more than any receiver tolerates.
inline constexpr int32_t cut_loss = 10000;

// A splitter into so many branches, which is a power of 2, loses 3 dB for each halving, and 0.3 dB because no splitter
// divides evenly.
constexpr int32_t splitter_loss(uint32_t branches)
{
    int32_t loss = 0;
    for (uint32_t ways = 1; ways < branches; ways *= 2)
        loss += 330;
    return loss;
}

// Single-mode fibre loses 0.35 dB a km at the 1310 nm at which ONUs send. ITU-T G.652 allows no more in that band.
constexpr int32_t fibre_loss(uint32_t metres)
{
    return static_cast<int32_t>(metres * 35 / 1000);
}

} // namespace ponsim
