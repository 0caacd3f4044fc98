// The light of ONUs becomes good, degraded or lost, and ports are blinded.
#pragma once

#include "model/olt/process.h"

namespace ponsim
{

// Due when light is no longer as the ONUs' records say; see LightWatch.
extern const Process light_process;

} // namespace ponsim
