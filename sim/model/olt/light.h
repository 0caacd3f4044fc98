// The light of ONUs at their ports: how much of it there is, and what it is good for.
#pragma once

#include <cstdint>

#include "model/base/time.h"
#include "model/olt/olt.h"
#include "model/olt/traffic.h"

namespace ponsim
{

// The laser of an ONU.
class OnuLaser
{
public:
    OnuLaser(const Olt &olt, const PonPort &port, const Mac &mac);

    // What it launches, in 0.01 dBm. From midnight to noon it only falls, from noon to the end of the day it only
    // rises, and no day gets more of it, at the same hour, than the day before.
    int32_t power(uint64_t second) const;

private:
    int32_t new_power; // at midnight
    uint32_t added_hours;
};

// What light loses between the port and the ONU, as the fibre is now, in 0.01 dB.
int32_t path_loss(const PonPort &port, const Arrival &arrival);

// What the branch loses beyond what it must.
int32_t damage_to(const PonPort &port, uint32_t branch);

// What is received of an ONU at its port, as the fibre is now: in 0.01 dBm, and as modules measure it, in 0.1 uW.
int32_t received_level(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at);
int32_t received_from(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at);

// The received power, in 0.01 dBm, from which on there are no bit errors to speak of. FEC helps where the port uses it
// and the ONU can.
int32_t sensitivity(const Olt &olt, const PonPort &port, const Arrival &arrival);

// How far received power is below the sensitivity, in steps of the size of `weakness_step`, each begun one counting;
// 0 where it is not below. More than `most_weak` makes no difference.
inline constexpr int32_t weakness_step = 25; // 0.01 dB
inline constexpr uint32_t most_weak = 40;
uint32_t weakness(int32_t received, int32_t sensitivity);

// Frames of the flow, of a million that the ONU sends, that reach the port with bit errors. It changes with a row of
// the ONU in a change, and in no other way.
uint32_t errored_share(const Olt &olt, const PonPort &port, const Arrival &arrival, const Flow &flow);

} // namespace ponsim
