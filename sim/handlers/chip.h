// What handlers of other families share with those of the PON chip.
#pragma once

#include "handlers/handler.h"

namespace ponsim
{

// Sets MPCP parameters: the command, where it is not an optical status.
Outcome mpcp_set(const Olt &olt, const Request &request);

} // namespace ponsim
