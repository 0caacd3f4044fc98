// This file finds what happened to alarms and ONUs between two readings.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "diagnosis/facts.h"

namespace ponctl
{

struct AlarmEvent {
    std::string_view what; // raised, cleared, or removed: by command, while it was active
    AlarmFact alarm;

    std::optional<MilliTime> at() const { return what == "cleared" ? alarm.cleared : alarm.raised; }
};

// Returns what happened to alarms. One that was raised and cleared in between has both events.
std::vector<AlarmEvent> alarm_events(const std::vector<AlarmFact> &before, const std::vector<AlarmFact> &now);

struct OnuEvent {
    OnuFact onu;
    std::string before, state;      // "gone" when the service has no such ONU at the port
    std::optional<AlarmFact> cause; // the active alarm that says why the ONU is not online
};

// Returns the ONUs whose state has changed. The alarms are those of the second reading.
std::vector<OnuEvent> onu_events(const std::vector<OnuFact> &before, const std::vector<OnuFact> &now,
                                 const std::vector<AlarmFact> &alarms);

} // namespace ponctl
