// This file changes the fibre of a port.
#pragma once

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Makes the branch lose so much more than an undamaged one, but no more than one that is cut. 0 mends it. The branch
// must exist.
Plan set_damage(const PonPort &port, uint32_t branch, int32_t loss);

} // namespace ponsim
