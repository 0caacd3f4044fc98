#include "model/olt/standing.h"

#include <algorithm>

#include "model/base/chance.h"
#include "model/base/random.h"
#include "model/olt/light.h"
#include "model/olt/mpcp.h"
#include "model/plant/bit_errors.h"

namespace ponsim
{

Levels levels_of(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction)
{
    const bool up = direction == Direction::up;
    const Transceiver &receiver = up ? port.optics->olt : olt.optics_of(port, arrival.mac).onu;
    return {.loss = up ? olt.module(port.number)->loss_threshold() : receiver.sensitivity - onu_loss_below_sensitivity,
            .good = sensitivity(olt, port, arrival, direction),
            .overload = receiver.overload,
            .saturation = receiver.overload + saturation_above_overload};
}

bool shines(const OnuRecord &record)
{
    return record.rogue && record.powered && record.phase != Phase::booting;
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
