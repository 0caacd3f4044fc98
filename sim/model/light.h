// The light of ONUs at their ports.
#pragma once

#include <cstdint>

#include "model/clock.h"
#include "model/olt.h"

namespace ponsim
{

// What is received of an ONU at its port, in 0.1 uW, as the fibre is now.
int32_t received_from(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at);

} // namespace ponsim
