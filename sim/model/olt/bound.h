// Which ONU a command means.
#pragma once

#include <cstdint>

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

// The ONU that is bound to the id or, where `mac` is not zero, has that address; an id other than 0 must then name the
// same ONU. The status is BSP_OK where there is one.
struct Named {
    uint32_t status;
    uint32_t onu_id;
};
Named find_bound(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac);

// Why a command on a set of ids cannot be: BSP_OK when each of them is bound. `port` may be null.
uint32_t check_bound(const PonPort *port, const OnuIds &onu_ids);

} // namespace ponsim
