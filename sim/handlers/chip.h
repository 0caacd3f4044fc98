// Handlers of other families share this with those of the PON chip.
#pragma once

#include "handlers/handler.h"

namespace ponsim
{

// Sets MPCP parameters. The command means this unless it is an optical status.
Outcome mpcp_set(const Olt &olt, const Request &request);

} // namespace ponsim
