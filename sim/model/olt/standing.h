// The standing of an ONU says how good its light is, by the power that its port receives.
#pragma once

#include <cstdint>

#include "model/base/alarm.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Light that was lost is heard again when it is this far above the loss level, in 0.01 dB. Without this margin an ONU
// at the edge would come and go with each 0.01 dB that temperature makes.
inline constexpr int32_t recovery_margin = 50;

inline constexpr int32_t no_limit = 1000000; // 0.01 dBm

// Powers are in 0.01 dBm.
struct Range {
    int32_t least = -no_limit;
    int32_t below = no_limit;

    bool contains(int32_t power) const { return power >= least && power < below; }
};

struct Levels {
    int32_t good; // with less, there are bit errors
    int32_t loss; // with less, the ONU is not heard
};

// A Standing is what is decided about an ONU's light.
struct Standing {
    Light light;
    uint32_t weakness; // of degraded light

    bool operator==(const Standing &) const = default;
};

Levels levels_of(const Olt &olt, const PonPort &port, const Arrival &arrival);
// Returns the standing that an ONU takes when its present one no longer holds.
Standing standing_at(int32_t received, const Levels &levels);
// Returns the received power with which an ONU keeps its standing.
Range range_of(const Standing &standing, const Levels &levels);

// Returns the standing that the ONU has now, whether or not it is to change.
Standing standing_of(const Olt &olt, const PonPort &port, const Arrival &arrival);

// Returns whether the ONU sends all the time. The laser of an ONU that boots is off.
bool shines(const OnuRecord &record);

// The first returns whether an ONU that sends all the time blinds the port, the second whether that has been noticed.
bool is_blinded(const Olt &olt, const PonPort &port);
bool known_blinded(const Olt &olt, const PonPort &port);
inline constexpr uint32_t rogue_bit = 1u << static_cast<uint32_t>(Alarm::rogue); // of ModuleRecord::raised

} // namespace ponsim
