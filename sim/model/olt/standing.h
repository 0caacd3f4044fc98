// How the light of an ONU stands, by what its port receives of it.
#pragma once

#include <cstdint>

#include "model/base/alarm.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Light that was lost is heard again when it is so far above the loss level, in 0.01 dB: without that an ONU would come
// and go with each 0.01 dB that the room makes at the edge.
inline constexpr int32_t recovery_margin = 50;

inline constexpr int32_t no_limit = 1000000; // 0.01 dBm

// Powers in 0.01 dBm.
struct Range {
    int32_t least = -no_limit;
    int32_t below = no_limit;

    bool contains(int32_t power) const { return power >= least && power < below; }
};

struct Levels {
    int32_t good; // with less there are bit errors
    int32_t loss; // with less it is not heard
};

// What is decided about an ONU's light.
struct Standing {
    Light light;
    uint32_t weakness; // of degraded light

    bool operator==(const Standing &) const = default;
};

Levels levels_of(const Olt &olt, const PonPort &port, const Arrival &arrival);
// How an ONU stands once it does not stand as before.
Standing standing_at(int32_t received, const Levels &levels);
// The received power with which an ONU stays as it stands.
Range range_of(const Standing &standing, const Levels &levels);

// As the ONU stands now, whether or not it is to.
Standing standing_of(const Olt &olt, const PonPort &port, const Arrival &arrival);

// Whether the ONU sends all the time. One that boots has its laser off.
bool shines(const OnuRecord &record);

// Whether an ONU that sends all the time blinds the port, and whether that has been seen.
bool is_blinded(const Olt &olt, const PonPort &port);
bool known_blinded(const Olt &olt, const PonPort &port);
inline constexpr uint32_t rogue_bit = 1u << static_cast<uint32_t>(Alarm::rogue); // of ModuleRecord::raised

} // namespace ponsim
