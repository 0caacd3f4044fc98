// This file says how much light of ONUs there is at their ports, and how good it is.
#pragma once

#include <cstdint>

#include "model/base/time.h"
#include "model/olt/olt.h"
#include "model/traffic/traffic.h"

namespace ponsim
{

// An OnuLaser is the laser of an ONU.
class OnuLaser
{
public:
    OnuLaser(const Olt &olt, const PonPort &port, const Mac &mac);

    // Returns the launched power in 0.01 dBm. From midnight to noon it only falls, from noon to the end of the day it
    // only rises. At the same hour it is never higher than on the day before.
    int32_t power(uint64_t second) const;

private:
    int32_t new_power; // at midnight
    uint32_t added_hours;
};

// Returns how much light is lost between the port and the ONU, as the fibre is now, in 0.01 dB.
int32_t path_loss(const PonPort &port, const Arrival &arrival);

// Returns how much more the branch loses than it does when undamaged.
int32_t damage_to(const PonPort &port, uint32_t branch);

// These return the power that the port receives from its ONU, as the fibre is now: the first in 0.01 dBm, the second in
// 0.1 uW, as modules measure it.
int32_t received_level(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at);
int32_t received_from(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at);

// Returns the received power, in 0.01 dBm, from which on bit errors are too few to count. FEC lowers it where the port
// uses FEC and the ONU supports it.
int32_t sensitivity(const Olt &olt, const PonPort &port, const Arrival &arrival);

// Returns how far the received power is below the sensitivity, in steps of `weakness_step`. A step that has begun
// counts as a whole one. The result is 0 when the power is not below. More than `most_weak` makes no difference.
inline constexpr int32_t weakness_step = 25; // 0.01 dB
inline constexpr uint32_t most_weak = 40;
uint32_t weakness(int32_t received, int32_t sensitivity);

// Returns how many frames of the flow, of a million that the ONU sends, reach the port with bit errors. The number only
// changes when a change has a row of the ONU.
uint32_t errored_share(const Olt &olt, const PonPort &port, const Arrival &arrival, const Flow &flow);

} // namespace ponsim
