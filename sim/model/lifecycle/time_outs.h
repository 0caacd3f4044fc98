// In this process links fail whose frames have not arrived for too long: ONUs are deregistered, and OAM links come up
// again.
#pragma once

#include "model/lifecycle/process.h"

namespace ponsim
{

// The process is due when a time-out of MPCP or of OAM ends. See time_out_of().
extern const Process time_out_process;

} // namespace ponsim
