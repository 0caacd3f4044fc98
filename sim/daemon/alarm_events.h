// The history of alarms is told as lines of JSON, a line for each event.
//
// An event has these members: number, at (ms of model time), pon_port (0 of an uplink), onu_id, mac, alarm, severity,
// state (active or cleared), cause and place. What is not known, and the ONU of an alarm that has none, is null. Every
// line begins with its number. A line with the member "missed" stands in the place of so many events, up to its number,
// that the history no longer has. A line with the member "restarted" says that the history began anew: it has fewer
// events than the asker has seen already.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "model/olt/olt.h"

namespace ponsim
{

// Returns the lines for the events after this number, as many as fit into so many bytes. Returns an empty text when
// there are none yet.
std::string events_after(const Olt &olt, uint64_t number, size_t most);

// Returns the lines for all events that the history has, as many as fit.
std::string first_events(const Olt &olt, size_t most);

// Returns the number with which a line begins. Throws std::runtime_error when there is none.
uint64_t number_of(const std::string &line);

} // namespace ponsim
