// Performance monitoring: what an ONU counts at its UNI ports, period by period. Its traffic is divided among those
// that have a link, so that together they count what the ONU sends to the PON port and is sent from there. The counts
// follow from its rates now and from how long it has been counting; nothing has to happen in between.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "model/onu/remote.h"
#include "model/port/counters.h"

namespace ponsim
{

inline constexpr ModelTime monitoring_period = 900 * ms_per_second;

// From when to when, in ms since the ONU began to monitor.
struct MonitoringTime {
    ModelTime from;
    ModelTime to;
};
// The period that runs now; none while the ONU does not monitor.
std::optional<MonitoringTime> current_period(const Olt &olt, const RemoteOnu &onu);
// The whole period before it; none before the first ends.
std::optional<MonitoringTime> last_period(const Olt &olt, const RemoteOnu &onu);

// In the order in which CTC has them.
struct UniCounters {
    struct Count {
        uint64_t down; // sent to the user
        uint64_t up;   // received from there
    };

    Count drop_events;
    Count octets; // of the frames
    Count frames; // that passed well
    Count broadcast;
    Count multicast;
    Count crc_errored;
    Count undersize;
    Count oversize;
    Count fragments;
    Count jabbers;
    std::array<Count, size_classes> sizes; // of the frames
    Count discarded;
    Count errored;
    uint64_t status_changes;
};
UniCounters uni_counters(const Olt &olt, const RemoteOnu &onu, uint32_t uni, const MonitoringTime &time);

} // namespace ponsim
