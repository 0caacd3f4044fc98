// Settings reach the UNI ports of ONUs some time after they were sent. From then on the ports follow them.
#pragma once

#include "model/lifecycle/process.h"

namespace ponsim
{

// In this process settings of UNI ports arrive.
extern const Process settings_process;

} // namespace ponsim
