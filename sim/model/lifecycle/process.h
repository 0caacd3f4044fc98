// A process is something that happens at the OLT by itself, as model time passes.
//
// A process is a file of the model with an entry in engine/processes.cpp. Like a handler, it only reads the OLT and
// says what is to change, and the simulator makes the change. A process wakes when something becomes different, and not
// in between: what grows evenly is worked out when it is looked at.
#pragma once

#include <optional>

#include "model/olt/olt.h"

namespace ponsim
{

struct Process {
    // Returns when the process happens next, which is now at the earliest. Returns no time while nothing is under way.
    // The answer is asked for after each change, and holds until the next one: as long as that time has not come, it
    // must not depend on how much time has passed.
    // Its cost must not grow with the number of ONUs.
    std::optional<ModelTime> (*next)(const Olt &olt);
    // Returns what changes then. olt.now() is that time. The change must move next() on, or end the process.
    Change (*happen)(const Olt &olt);
};

} // namespace ponsim
