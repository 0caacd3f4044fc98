#include "model/olt/standing.h"

#include <algorithm>

#include "model/base/chance.h"
#include "model/base/random.h"
#include "model/olt/light.h"
#include "model/olt/mpcp.h"
#include "model/plant/bit_errors.h"

namespace ponsim
{
namespace
{

bool reaches(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    return received_level(olt, port, arrival, Direction::up, olt.now()) >= olt.module(port.number)->loss_threshold();
}

Range range_of_errors(const Reception &reception, const Levels &levels)
{
    const auto weaker_by = [&](uint32_t steps) { return levels.good - static_cast<int32_t>(steps) * error_step; };
    const bool weakest = reception.steps == most_steps;
    return {.least = weakest ? levels.loss : std::max(weaker_by(reception.steps), levels.loss),
            .below = weaker_by(reception.steps - 1)};
}

Range range_of_overload(const Reception &reception, const Levels &levels)
{
    const int32_t stronger_by = levels.overload + static_cast<int32_t>(reception.steps) * error_step;
    return {.least = stronger_by - error_step + 1, .below = std::min(stronger_by + 1, levels.saturation)};
}

} // namespace

Levels levels_of(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction)
{
    const bool up = direction == Direction::up;
    const Transceiver &receiver = up ? port.optics->olt : olt.optics_of(port, arrival.mac).onu;
    return {.loss = up ? olt.module(port.number)->loss_threshold() : receiver.sensitivity - onu_loss_below_sensitivity,
            .good = sensitivity(olt, port, arrival, direction),
            .overload = receiver.overload,
            .saturation = receiver.overload + saturation_above_overload};
}

Reception reception_at(int32_t received, const Levels &levels)
{
    if (received < levels.loss) return {.light = Light::lost};
    if (received >= levels.saturation) return {.light = Light::saturated};
    if (received > levels.overload)
        return {.light = Light::overloaded, .steps = error_steps(received - levels.overload)};
    if (received < levels.good) return {.light = Light::degraded, .steps = error_steps(levels.good - received)};
    return {};
}

Range range_of(const Reception &reception, const Levels &levels)
{
    switch (reception.light) {
    case Light::good:
        return {.least = std::max(levels.good, levels.loss), .below = levels.overload + 1};
    case Light::degraded:
        return range_of_errors(reception, levels);
    case Light::lost:
        return {.below = levels.loss + recovery_margin};
    case Light::overloaded:
        return range_of_overload(reception, levels);
    case Light::saturated:
        return {.least = levels.saturation - recovery_margin};
    }
    return {};
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

namespace
{

// Draws the time until no frame has arrived for a time-out, where one is sent in each interval. Returns no time when
// that takes too long.
std::optional<ModelTime> silence_after(Random &random, Chance lost, ModelTime time_out, uint64_t interval_us)
{
    constexpr uint64_t us_per_ms = 1000;
    const uint64_t frames = (time_out * us_per_ms + interval_us - 1) / interval_us;
    const uint64_t trials = trials_until_failures(random, lost, frames);
    if (trials >= never) return std::nullopt;
    return (trials * interval_us + us_per_ms - 1) / us_per_ms;
}

// Without a GATE an ONU does not send REPORTs either. So the shorter one of the two time-outs counts downstream.
std::optional<TimeOut> time_out_of(const Olt &olt, const OnuRecord &record, const Mac &mac, Direction direction,
                                   const Mpcp &mpcp)
{
    constexpr uint64_t oam_interval = 1000000; // us
    const Reception &reception = record.reception(direction);
    if (reception.light == Light::good) return std::nullopt;
    const bool by_gate = direction == Direction::down && mpcp.gate_timeout <= mpcp.report_timeout;
    const ModelTime shorter = by_gate ? mpcp.gate_timeout : mpcp.report_timeout;
    const Missing missing = by_gate ? Missing::gate : Missing::report;
    if (!reception.heard()) return TimeOut{reception.since + shorter, missing};

    const Chance lost = frame_error(reception.steps, control_frame);
    Random random =
        random_for(olt.seed() + 2 * reception.since + static_cast<uint64_t>(direction), Purpose::control_frames, mac);
    std::optional<TimeOut> first;
    if (const auto silence = silence_after(random, lost, shorter, mpcp.grant_cycle))
        first = {reception.since + *silence, missing};
    if (record.phase != Phase::registered) return first;
    if (const auto silence = silence_after(random, lost, lost_link_time, oam_interval))
        if (!first || reception.since + *silence < first->at) first = {reception.since + *silence, Missing::oampdu};
    return first;
}

} // namespace

std::optional<TimeOut> time_out_of(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    const auto found = port.onus.find(arrival.mac);
    if (found == port.onus.end() || !port.limits.contain(arrival.distance)) return std::nullopt;
    const OnuRecord &record = found->second;
    const bool linked =
        record.phase == Phase::registered || record.phase == Phase::oam || record.phase == Phase::authentication;
    if (!record.powered || !linked) return std::nullopt;
    const Mpcp mpcp = mpcp_of(olt, port.number);
    std::optional<TimeOut> first;
    for (const Direction direction : directions) {
        const std::optional<TimeOut> one = time_out_of(olt, record, arrival.mac, direction, mpcp);
        if (one && (!first || one->at < first->at)) first = one;
    }
    return first;
}

} // namespace ponsim
