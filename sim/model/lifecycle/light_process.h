// In this process the light of ONUs becomes good, degraded, lost or too strong, and ports are blinded.
#pragma once

#include "model/lifecycle/process.h"

namespace ponsim
{

// The process is due when light no longer is as the ONUs' records say. See LightWatch.
extern const Process light_process;

} // namespace ponsim
