// Light that is too weak or too strong for a receiver has bit errors. This file says how many, and how many frames that
// spoils.
#pragma once

#include <cstdint>

#include "model/base/chance.h"

namespace ponsim
{

// How far light is beyond what a receiver bears counts in these steps.
inline constexpr int32_t error_step = 25; // 0.01 dB
inline constexpr uint32_t most_steps = 40;

// Returns the steps of light that is so much beyond, in 0.01 dB. A step that has begun counts as a whole one. More than
// `most_steps` makes no difference. The result is 0 when the light is not beyond.
uint32_t error_steps(int32_t beyond);

// Returns the chance that a frame of so many octets has a bit error. With 0 steps they are too few to count.
Chance frame_error(uint32_t steps, uint32_t octets);

// MPCPDUs have this length. OAMPDUs have at least this length, and no more while they have nothing to say.
inline constexpr uint32_t control_frame = 64; // octets

} // namespace ponsim
