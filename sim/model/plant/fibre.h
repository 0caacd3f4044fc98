// What light loses on its way through fibre, splitters and connectors.
#pragma once

#include <cstdint>

namespace ponsim
{

// All losses are in 0.01 dB.

// Of a connector pair: the 0.25 dB that link budgets are planned with.
inline constexpr int32_t connector_loss = 25;
// Of a fibre that is cut: more than any receiver can do without.
inline constexpr int32_t cut_loss = 10000;

// Of a splitter into so many branches, a power of 2: 3 dB for each halving, and 0.3 dB because none is quite even.
constexpr int32_t splitter_loss(uint32_t branches)
{
    int32_t loss = 0;
    for (uint32_t ways = 1; ways < branches; ways *= 2)
        loss += 330;
    return loss;
}

// Of single-mode fibre at the 1310 nm that ONUs send: 0.35 dB a km, as ITU-T G.652 allows at most in that band.
constexpr int32_t fibre_loss(uint32_t metres)
{
    return static_cast<int32_t>(metres * 35 / 1000);
}

} // namespace ponsim
