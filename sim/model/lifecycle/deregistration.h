// ONUs that are deregistered by command. Each is off the fibre for a while and registers by itself at a later discovery
// window of its port, unless it is on the black list then.
#pragma once

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

// How long an ONU stays away at least.
inline constexpr ModelTime shortest_absence = 2 * ms_per_second;

// The ONU must not be offline.
Plan deregister_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id);

// All that are registered at the port: those that wait, too.
Plan deregister_all(const Olt &olt, uint32_t pon_port);

} // namespace ponsim
