// This file concludes why an ONU is in its state, from what the service says of it and of the other ONUs of its port.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnosis/facts.h"

namespace ponctl
{

// The Facts are what the service says. Where it says nothing, they are empty.
struct Facts {
    OnuFact onu;
    std::vector<OnuFact> onus;     // all ONUs of the port, with this one
    std::vector<AlarmFact> alarms; // all alarms of the port and of its ONUs
    std::optional<LightFact> light;
    std::optional<MeasuredFact> last_measured; // the port's last power measurement, if it was of this ONU
    std::optional<LightLimits> limits;
    std::optional<MilliTime> now;
};

// Neighbours are the other ONUs that are bound at the port.
struct Neighbours {
    uint32_t bound = 0, online = 0, offline = 0;
    uint32_t together = 0; // those that are offline since the same time as the ONU
};

struct Diagnosis {
    std::string_view verdict; // one word for programs; it stays the same from version to version
    std::string summary;      // one sentence for people
    std::optional<MilliTime> since;
    std::optional<AlarmFact> last_cause; // why the ONU was deregistered or kept out last
    std::vector<AlarmFact> alarms;       // those of the ONU, and those of its port that are active
    Neighbours neighbours;
    std::optional<double> margin;    // dB between the light at the port and the limit below which it is lost
    std::vector<std::string> checks; // what to do next, in this order
};

// ONUs that went offline within this time of each other went offline together.
inline constexpr MilliTime same_time = 5000;

// Returns the alarm that says why an ONU is, or was, not online. Returns null when there is none.
const AlarmFact *reason_of(const std::vector<AlarmFact> &alarms, const OnuFact &onu);

Diagnosis diagnose(const Facts &facts);

} // namespace ponctl
