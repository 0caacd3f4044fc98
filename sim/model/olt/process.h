// What happens at the OLT by itself, as model time goes by.
//
// A process is a file of the model with an entry in engine/processes.cpp. Like a handler, it only reads the OLT, and
// says what is to change; the simulator does it. A process wakes when something becomes different, not in between: what
// grows evenly follows from the time at which it is looked at.
#pragma once

#include <optional>

#include "model/olt/olt.h"

namespace ponsim
{

struct Process {
    // When it happens next, now at the earliest; none while nothing is under way. Its cost must not grow with the
    // number of ONUs.
    std::optional<ModelTime> (*next)(const Olt &olt);
    // What changes then; olt.now() is that time. The change must move next() on, or end it.
    Change (*happen)(const Olt &olt);
};

} // namespace ponsim
