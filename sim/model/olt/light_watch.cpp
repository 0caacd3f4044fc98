#include "model/olt/light_watch.h"

#include <algorithm>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/search.h"
#include "model/olt/light.h"
#include "model/olt/mpcp.h"
#include "model/olt/standing.h"
#include "model/plant/module.h"

namespace ponsim
{
namespace
{

constexpr uint64_t day = 2 * half_day;
constexpr uint64_t horizon = 1000 * 365; // days for which it looks ahead

// Returns the first second from `from` on at which the power of the laser is outside the range in which it is at
// `from`. Power is least at noon, and greatest at the end of this day, because no later day has more.
std::optional<uint64_t> first_outside(const OnuLaser &laser, const Range &range, uint64_t from)
{
    const auto too_low = [&](uint64_t second) { return laser.power(second) < range.least; };
    const auto too_high = [&](uint64_t second) { return laser.power(second) >= range.below; };
    std::optional<uint64_t> first;
    const uint64_t midnight = from / day * day;
    const uint64_t evening = midnight + day - 1;
    if (too_high(evening)) first = first_second(std::max(from, midnight + half_day), evening, too_high);

    const uint64_t noon = midnight + half_day + (from > midnight + half_day ? day : 0);
    if (!too_low(noon + horizon * day)) return first;
    const uint64_t found =
        noon + first_second(0, horizon, [&](uint64_t days) { return too_low(noon + days * day); }) * day;
    const uint64_t low = first_second(std::max(from, found - half_day), found, too_low);
    return first ? std::min(*first, low) : low;
}

// Returns the first second from `from` on in which the laser of the port launches less than this.
std::optional<uint64_t> first_below(const Module &module, int32_t least, uint64_t from)
{
    const auto too_low = [&](uint64_t second) { return module.launch_level(second) < least; };
    if (!module.laser_on() || !too_low(from + horizon * day)) return std::nullopt;
    return first_second(from, from + horizon * day, too_low);
}

// Returns when the light of the ONU at the port is no longer as its record says, which is now at the earliest.
std::optional<ModelTime> first_change_upstream(const Olt &olt, const PonPort &port, const Arrival &arrival,
                                               const OnuRecord &record, bool blinded)
{
    const bool rogue = shines(record);
    if ((blinded || rogue) && record.up.light != Light::lost) return olt.now();
    if (blinded && !rogue) return std::nullopt;
    const uint64_t second = olt.now() / ms_per_second;
    const Levels levels = levels_of(olt, port, arrival, Direction::up);
    const int32_t loss = path_loss(port, arrival, Direction::up);
    const OnuLaser laser(olt, port, arrival.mac);
    const int32_t received = laser.power(second) - loss;
    Range range = range_of(record.up, levels);
    // The light of a rogue ONU is lost in either case. What counts is whether the ONU blinds the port.
    if (rogue) range = received < levels.loss ? Range{.below = levels.loss} : Range{.least = levels.loss};
    if (!range.contains(received)) return olt.now();
    const std::optional<uint64_t> outside = first_outside(laser, {range.least + loss, range.below + loss}, second);
    if (!outside) return std::nullopt;
    return *outside * ms_per_second;
}

} // namespace

void LightWatch::start(const Olt &olt)
{
    ports.assign(olt.ports().size(), {});
    for (const PonPort &port : olt.ports())
        look(olt, port);
}

void LightWatch::follow(const Olt &olt, const Change &change)
{
    std::vector<bool> concerned(ports.size());
    for (const auto &[key, record] : change.of<OnuRecord>())
        concerned.at(key.pon_port - 1) = true;
    for (const auto &[key, damage] : change.of<Damage>())
        concerned.at(key.pon_port - 1) = true;
    for (const auto &[key, onu] : change.of<PluggedOnu>())
        concerned.at(key.pon_port - 1) = true;
    for (const auto &[cage, record] : change.of<ModuleRecord>())
        if (olt.port(cage)) concerned.at(cage - 1) = true;
    for (const auto &[key, block] : change.of<Block>())
        if (is_mpcp(key)) concerned.at(key.pon_port - 1) = true;
    for (const PonPort &port : olt.ports())
        if (concerned[port.number - 1]) look(olt, port);
}

std::optional<ModelTime> LightWatch::first_of(Time time) const
{
    std::optional<ModelTime> first;
    for (const Port &port : ports)
        if (port.*time && (!first || *(port.*time) < *first)) first = port.*time;
    return first;
}

bool LightWatch::is_due(uint32_t pon_port, Time time, ModelTime now) const
{
    const std::optional<ModelTime> &at = ports.at(pon_port - 1).*time;
    return at && *at <= now;
}

void LightWatch::look(const Olt &olt, const PonPort &port)
{
    Port &found = ports.at(port.number - 1);
    found = {};
    const auto consider = [](std::optional<ModelTime> &first, ModelTime time) {
        first = std::min(first.value_or(time), time);
    };
    const bool blinded = is_blinded(olt, port);
    if (blinded != known_blinded(olt, port)) consider(found.next, olt.now());
    const uint64_t second = olt.now() / ms_per_second;
    Range launch; // the launch power of the port with which all ONUs receive as they do
    for (const Arrival &arrival : port.arrivals) {
        const OnuRecord record = port.record(arrival.mac);
        if (const auto time_out = time_out_of(olt, port, arrival))
            consider(found.time_out, std::max(time_out->at, olt.now()));
        const Range received = range_of(record.down, levels_of(olt, port, arrival, Direction::down));
        const int32_t loss = path_loss(port, arrival, Direction::down);
        launch.least = std::max(launch.least, received.least + loss);
        launch.below = std::min(launch.below, received.below + loss);
        if (const auto change = first_change_upstream(olt, port, arrival, record, blinded))
            consider(found.next, *change);
    }
    const Module &module = *olt.module(port.number);
    if (!launch.contains(module.launch_level(second)))
        consider(found.next, olt.now());
    else if (const auto too_low = first_below(module, launch.least, second))
        consider(found.next, *too_low * ms_per_second);
}

Plan age_onu(const Olt &olt, uint32_t pon_port, const Mac &mac, uint32_t hours)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (!port->arrived(mac)) return {PON_ERR_NOT_ARRIVED};
    Plan plan{BSP_OK};
    OnuRecord &record = edit(plan.change, *port, mac);
    record.added_hours = std::min(record.added_hours + hours, max_laser_hours);
    return plan;
}

Plan set_rogue(const Olt &olt, uint32_t pon_port, const Mac &mac, bool rogue)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (!port->arrived(mac)) return {PON_ERR_NOT_ARRIVED};
    Plan plan{BSP_OK};
    edit(plan.change, *port, mac).rogue = rogue;
    return plan;
}

} // namespace ponsim
