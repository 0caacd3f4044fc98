// In this process alarms are raised and cleared as their conditions say.
#pragma once

#include "model/lifecycle/process.h"

namespace ponsim
{

// The process is due at once when an alarm no longer is as its condition says. See AlarmWatch.
extern const Process alarm_process;

} // namespace ponsim
