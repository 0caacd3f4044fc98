// This file says how much light there is at the ends of a PON port's fibre, and how good it is.
#pragma once

#include <cstdint>

#include "model/base/direction.h"
#include "model/base/time.h"
#include "model/olt/olt.h"
#include "model/plant/onu_laser.h"
#include "model/traffic/traffic.h"

namespace ponsim
{

// Returns the laser of an ONU at the port, as old as it is.
OnuLaser laser_of(const Olt &olt, const PonPort &port, const Mac &mac);

// Returns how much light of one direction is lost between the port and the ONU, as the fibre is now, in 0.01 dB.
int32_t path_loss(const PonPort &port, const Arrival &arrival, Direction direction);

// Returns how much more the branch loses than it does when undamaged.
int32_t damage_to(const PonPort &port, uint32_t branch);

// Returns the power, in 0.01 dBm, that the port receives from its ONU, or the ONU from its port, as the fibre is now.
int32_t received_level(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction, ModelTime at);
// Returns what the port receives from its ONU in 0.1 uW, as modules measure it.
int32_t received_from(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at);

// Returns the received power, in 0.01 dBm, from which on bit errors are too few to count. FEC lowers it where the port
// uses FEC and the ONU supports it.
int32_t sensitivity(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction);

// Returns how many frames of this length, of a thousand million that are sent, arrive with bit errors. Of light that is
// not heard these are all.
uint32_t errored_share(const Reception &reception, uint32_t length);
// Returns the same for the frames of each flow.
const PerFlow &errored_shares(const Reception &reception);

} // namespace ponsim
