// Performance monitoring is what an ONU counts at its UNI ports, period by period. Together the ports count what the
// ONU sends to the PON port and is sent from there. The counts follow from the ONU's ledger and its present rates, so
// that nothing has to happen in between.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "model/olt/remote.h"
#include "model/port/counters.h"

namespace ponsim
{

// A MonitoringTime has a beginning and an end, in ms since the ONU began to monitor. Neither is before the last whole
// period, but for the very beginning.
struct MonitoringTime {
    ModelTime from;
    ModelTime to;
};
// Returns the period that runs now. Returns none while the ONU does not monitor.
std::optional<MonitoringTime> current_period(const Olt &olt, const RemoteOnu &onu);
// Returns the whole period before that. Returns none before the first period ends.
std::optional<MonitoringTime> last_period(const Olt &olt, const RemoteOnu &onu);

// The counters are in the order of CTC.
struct UniCounters {
    struct Count {
        uint64_t down; // sent to the user
        uint64_t up;   // received from the user

        bool operator==(const Count &) const = default;
    };

    Count drop_events;
    Count octets; // octets of the frames
    Count frames; // frames that passed without errors
    Count broadcast;
    Count multicast;
    Count crc_errored;
    Count undersize;
    Count oversize;
    Count fragments;
    Count jabbers;
    std::array<Count, size_classes> sizes; // numbers of frames by length
    Count discarded;
    Count errored;
    uint64_t status_changes;

    bool operator==(const UniCounters &) const = default;
};
UniCounters uni_counters(const Olt &olt, const RemoteOnu &onu, uint32_t uni, const MonitoringTime &time);

} // namespace ponsim
