// This file says how much light is lost on its way through fibre, splitters and connectors.
#pragma once

#include <cstdint>

#include "model/base/direction.h"

namespace ponsim
{

// All losses are in 0.01 dB.

// A connector pair loses the 0.25 dB with which link budgets are planned.
inline constexpr int32_t connector_loss = 25;
// A port reaches through at most so many fibres, one behind the other, and through at most so much loss, which is far
// beyond what any receiver tolerates.
inline constexpr uint32_t deepest_fibre = 6;
inline constexpr int32_t greatest_loss = 4500;

// A splitter into so many branches, which is a power of 2, loses 3 dB for each halving, and 0.3 dB because no splitter
// divides evenly.
constexpr int32_t splitter_loss(uint32_t branches)
{
    int32_t loss = 0;
    for (uint32_t ways = 1; ways < branches; ways *= 2)
        loss += 330;
    return loss;
}

// ONUs send at 1310 nm and OLTs at 1490 nm. ITU-T G.652 allows cables to lose 0.4 dB a km at either. Those that are
// laid lose 0.35 and 0.25 dB.
constexpr int32_t fibre_loss(uint32_t metres, Direction direction)
{
    return static_cast<int32_t>(metres * (direction == Direction::up ? 35 : 25) / 1000);
}

} // namespace ponsim
