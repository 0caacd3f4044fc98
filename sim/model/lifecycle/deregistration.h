// Commands deregister ONUs. Such an ONU is off the fibre for a while, and registers by itself at a later discovery
// window of its port, unless it is on the blacklist then.
#pragma once

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// An ONU stays away at least this long.
inline constexpr ModelTime shortest_absence = 2 * ms_per_second;

// Deregisters an ONU, which must not be offline.
Plan deregister_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id);

// Deregisters all ONUs that are registered at the port, including those that wait.
Plan deregister_all(const Olt &olt, uint32_t pon_port);

} // namespace ponsim
