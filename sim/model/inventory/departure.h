// In this process ONUs that were unplugged are gone once their links have failed.
#pragma once

#include "model/lifecycle/process.h"

namespace ponsim
{

extern const Process departure_process;

} // namespace ponsim
