// The standing of an ONU says how good its light is in both directions, by the power that is received, and for how long
// its links bear that.
#pragma once

#include <cstdint>
#include <optional>

#include "model/base/alarm.h"
#include "model/olt/olt.h"
#include "model/plant/reception.h"

namespace ponsim
{

// Returns the levels of the receiver at the end of the direction.
Levels levels_of(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction);

// Returns whether the ONU sends all the time. The laser of an ONU that boots is off.
bool shines(const OnuRecord &record);

// Returns whether it has been noticed that an ONU blinds the port. See LightWatch.
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
