// ONUs, PON ports and uplinks have alarms. An alarm is raised by the change that is its cause, or by its condition. It
// ends when its condition ends (see AlarmWatch), and stays in the list as cleared until it is cleared by command.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/olt/olt.h"

namespace ponsim
{

std::string_view name_of(Alarm alarm);
std::string_view severity_of(Alarm alarm); // critical, major or minor
std::string_view name_of(AlarmCause cause);
std::string_view state_of(bool active); // active or cleared

// Returns what is known of the place beyond port and ONU, as a branch of the fibre, a UNI port or an uplink. Returns an
// empty text when nothing more is known.
std::string place_of(const Olt &olt, const AlarmKey &key, const AlarmReason &reason);

// Raises the alarm once more. An alarm that is active goes on, for the new reason. Call it at most once for each alarm
// in a change.
void raise(const Olt &olt, const AlarmKey &key, const AlarmReason &reason, Change &change);

// Clears the alarm, because its condition has ended.
void end(const Olt &olt, const AlarmKey &key, Change &change);

// Clears the alarm by command, and forgets it. An active alarm whose condition holds is raised again at once. That is
// not so for an alarm that reports an event, for a test, and for the loss of an ONU that is not bound, which nobody
// expects to come back.
void clear_by_command(const Olt &olt, const AlarmKey &key, Change &change);

} // namespace ponsim
