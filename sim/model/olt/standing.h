// The standing of an ONU says how good its light is in both directions, by the power that is received, and for how long
// its links bear that.
#pragma once

#include <cstdint>
#include <optional>

#include "model/base/alarm.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Light that was lost is heard again when it is this far above the loss level, in 0.01 dB. Without this margin an ONU
// at the edge would come and go with each 0.01 dB that temperature makes. The same holds for light that was too strong.
inline constexpr int32_t recovery_margin = 50;

inline constexpr int32_t no_limit = 1000000; // 0.01 dBm

// Powers are in 0.01 dBm.
struct Range {
    int32_t least = -no_limit;
    int32_t below = no_limit;

    bool contains(int32_t power) const { return power >= least && power < below; }
};

struct Levels {
    int32_t loss;       // with less, the sender is not heard
    int32_t good;       // with less, there are bit errors
    int32_t overload;   // with more, there are, too
    int32_t saturation; // with so much, the sender is not heard
};

Levels levels_of(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction);
// Returns the reception that an ONU or a port has when its present one no longer holds.
Reception reception_at(int32_t received, const Levels &levels);
// Returns the received power with which a reception holds.
Range range_of(const Reception &reception, const Levels &levels);

// Returns whether the ONU sends all the time. The laser of an ONU that boots is off.
bool shines(const OnuRecord &record);

// The first returns whether an ONU that sends all the time blinds the port, the second whether that has been noticed.
bool is_blinded(const Olt &olt, const PonPort &port);
bool known_blinded(const Olt &olt, const PonPort &port);
inline constexpr uint32_t rogue_bit = 1u << static_cast<uint32_t>(Alarm::rogue); // of ModuleRecord::raised

// An OAM link fails when no OAMPDU arrives for this time (local_lost_link_timer of IEEE 802.3, clause 57).
inline constexpr ModelTime lost_link_time = 5 * ms_per_second;

// A TimeOut says when a link fails, and what has not arrived for too long by then.
enum class Missing : uint32_t { gate, report, oampdu };
struct TimeOut {
    ModelTime at;
    Missing missing;
};
// Returns when a link of the ONU fails as long as its light stays as it is. Returns nothing while the ONU has no link,
// and when its links bear the light for good.
std::optional<TimeOut> time_out_of(const Olt &olt, const PonPort &port, const Arrival &arrival);

} // namespace ponsim
