// The history of alarms says when which alarm was raised and cleared.
#pragma once

#include "model/olt/olt.h"

namespace ponsim
{

// Adds to the change the events of the alarms that it raises or clears. Events that are older than the history goes
// back are dropped.
void add_events(const Olt &olt, Change &change);

} // namespace ponsim
