// This file says what a receiver makes of the light that reaches it. Powers are in 0.01 dBm.
#pragma once

#include <cstdint>

#include "model/kept/onu.h"

namespace ponsim
{

// Light that was lost is heard again when it is this far above the loss level, in 0.01 dB. Without this margin an ONU
// at the edge would come and go with each 0.01 dB that temperature makes. The same holds for light that was too strong.
inline constexpr int32_t recovery_margin = 50;

inline constexpr int32_t no_limit = 1000000; // 0.01 dBm

struct Range {
    int32_t least = -no_limit;
    int32_t below = no_limit;

    bool contains(int32_t power) const { return power >= least && power < below; }
    bool operator==(const Range &) const = default;
};

struct Levels {
    int32_t loss;       // with less, the sender is not heard
    int32_t good;       // with less, there are bit errors
    int32_t overload;   // with more, there are, too
    int32_t saturation; // with so much, the sender is not heard
};

// Returns the reception that an ONU or a port has when its present one no longer holds.
Reception reception_at(int32_t received, const Levels &levels);
// Returns the received power with which a reception holds.
Range range_of(const Reception &reception, const Levels &levels);

} // namespace ponsim
