// These functions find the ONU that a command means.
#pragma once

#include <cstdint>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// The ONU is the one that is bound to the id or, where `mac` is not zero, the one that has that address. An id other
// than 0 must then name the same ONU. The status is BSP_OK when there is such an ONU.
struct Named {
    uint32_t status;
    uint32_t onu_id;
};
Named find_bound(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac);

// Returns why a command on a set of ids is not possible, or BSP_OK when each id is bound. `port` may be null.
uint32_t check_bound(const PonPort *port, const OnuIds &onu_ids);

} // namespace ponsim
