#include "model/olt/standing.h"

#include <algorithm>

#include "model/olt/light.h"

namespace ponsim
{
namespace
{

bool reaches(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    return received_level(olt, port, arrival, olt.now()) >= olt.module(port.number)->loss_threshold();
}

} // namespace

Levels levels_of(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    return {sensitivity(olt, port, arrival), olt.module(port.number)->loss_threshold()};
}

Standing standing_at(int32_t received, const Levels &levels)
{
    if (received < levels.loss) return {Light::lost, 0};
    const uint32_t steps = weakness(received, levels.good);
    return {steps == 0 ? Light::good : Light::degraded, steps};
}

Range range_of(const Standing &standing, const Levels &levels)
{
    const auto weaker_by = [&](uint32_t steps) { return levels.good - static_cast<int32_t>(steps) * weakness_step; };
    switch (standing.light) {
    case Light::good:
        return {.least = std::max(levels.good, levels.loss)};
    case Light::degraded: {
        const bool weakest = standing.weakness == most_weak;
        return {.least = weakest ? levels.loss : std::max(weaker_by(standing.weakness), levels.loss),
                .below = weaker_by(standing.weakness - 1)};
    }
    case Light::lost:
        return {.below = levels.loss + recovery_margin};
    }
    return {};
}

Standing standing_of(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    return {port.record(arrival.mac).light, olt.light_watch().weakness(port.number, arrival.mac)};
}

bool shines(const OnuRecord &record)
{
    return record.rogue && record.powered && record.phase != Phase::booting;
}

bool is_blinded(const Olt &olt, const PonPort &port)
{
    return std::ranges::any_of(port.onus, [&](const auto &onu) {
        const Arrival *arrival = port.arrived(onu.first);
        return arrival && shines(onu.second) && reaches(olt, port, *arrival);
    });
}

bool known_blinded(const Olt &olt, const PonPort &port)
{
    return olt.module(port.number)->record().raised & rogue_bit;
}

} // namespace ponsim
