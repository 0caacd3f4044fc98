// What happens to the fibre of a port.
#pragma once

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

// The branch loses so much beyond what it must, and not more than one that is cut; 0: it is mended. It must exist.
Plan set_damage(const PonPort &port, uint32_t branch, int32_t loss);

} // namespace ponsim
