#include "model/olt/light_watch.h"

#include <algorithm>
#include <numeric>
#include <utility>

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

constexpr uint64_t horizon = 1000 * 365 * 2 * half_day; // s; for so long it looks ahead

// Returns the first second from `from` on in which the laser of the port launches less than this.
std::optional<uint64_t> first_below(const Module &module, int32_t least, uint64_t from)
{
    const auto too_low = [&](uint64_t second) { return module.launch_level(second) < least; };
    if (!module.laser_on() || !too_low(from + horizon)) return std::nullopt;
    return first_second(from, from + horizon, too_low);
}

// Brings the earlier one of two times into the first.
void consider(std::optional<ModelTime> &first, ModelTime time)
{
    first = std::min(first.value_or(time), time);
}

bool has_come(const std::optional<ModelTime> &time, ModelTime now)
{
    return time && *time <= now;
}

} // namespace

void LightWatch::start(const Olt &olt)
{
    ports = std::vector<Port>(olt.ports().size());
    for (const PonPort &port : olt.ports())
        meet(olt, port);
}

void LightWatch::meet(const Olt &olt, const PonPort &port)
{
    Port &found = ports.at(port.number - 1);
    found = Port();
    for (const Arrival &arrival : port.arrivals)
        found.onus.push_back({laser_of(olt, port, arrival.mac), {}, {}});
    found.changes = DueTimes(port.arrivals.size());
    found.time_outs = DueTimes(port.arrivals.size());
    look(olt, port);
}

void LightWatch::follow(const Olt &olt, const Change &change)
{
    std::vector<bool> others(ports.size()), whole(ports.size());
    for (const auto &[key, onu] : change.of<PluggedOnu>())
        others.at(key.pon_port - 1) = true;
    for (const auto &[pon_port, record] : change.of<PortRecord>())
        whole.at(pon_port - 1) = true;
    for (const auto &[key, damage] : change.of<Damage>())
        whole.at(key.pon_port - 1) = true;
    for (const auto &[cage, record] : change.of<ModuleRecord>())
        if (olt.port(cage)) whole.at(cage - 1) = true;
    for (const auto &[key, block] : change.of<Block>())
        if (is_mpcp(key)) whole.at(key.pon_port - 1) = true;

    std::vector<bool> partly(ports.size());
    for (const auto &[key, record] : change.of<OnuRecord>()) {
        const PonPort &port = *olt.port(key.pon_port);
        const Arrival *arrival = port.arrived(key.mac);
        if (!arrival || others.at(key.pon_port - 1) || whole.at(key.pon_port - 1)) continue;
        const bool concerns_all = look(olt, port, static_cast<size_t>(arrival - port.arrivals.data()));
        if (concerns_all) partly.at(key.pon_port - 1) = true;
    }
    for (const PonPort &port : olt.ports())
        if (others[port.number - 1])
            meet(olt, port);
        else if (whole[port.number - 1])
            look(olt, port);
        else if (partly[port.number - 1])
            look_at_port(olt, port);
}

std::optional<ModelTime> LightWatch::next() const
{
    std::optional<ModelTime> first;
    for (const Port &port : ports) {
        if (const auto change = port.changes.first()) consider(first, *change);
        if (port.all_at) consider(first, *port.all_at);
    }
    return first;
}

bool LightWatch::is_due(uint32_t pon_port, ModelTime now) const
{
    const Port &port = ports.at(pon_port - 1);
    return has_come(port.all_at, now) || has_come(port.changes.first(), now);
}

std::vector<size_t> LightWatch::due(uint32_t pon_port, ModelTime now) const
{
    const Port &port = ports.at(pon_port - 1);
    std::vector<size_t> due = port.changes.due(now);
    const auto shines = [&](size_t arrival) { return port.onus[arrival].shines; };
    if (!has_come(port.all_at, now) && std::ranges::none_of(due, shines)) return due;
    due.resize(port.onus.size());
    std::iota(due.begin(), due.end(), size_t{0});
    return due;
}

bool LightWatch::is_blinded(const Olt &olt, const PonPort &port) const
{
    const uint64_t second = olt.now() / ms_per_second;
    return std::ranges::any_of(ports.at(port.number - 1).onus, [second](const Onu &onu) {
        return onu.shines && onu.laser.power(second) - onu.up.loss >= onu.up.levels.loss;
    });
}

std::optional<ModelTime> LightWatch::next_time_out() const
{
    std::optional<ModelTime> first;
    for (const Port &port : ports)
        if (const auto time_out = port.time_outs.first()) consider(first, *time_out);
    return first;
}

std::vector<size_t> LightWatch::timed_out(uint32_t pon_port, ModelTime now) const
{
    return ports.at(pon_port - 1).time_outs.due(now);
}

void LightWatch::look(const Olt &olt, const PonPort &port)
{
    Port &found = ports.at(port.number - 1);
    for (size_t index = 0; index < port.arrivals.size(); ++index) {
        const Arrival &arrival = port.arrivals[index];
        const auto path_of = [&](Direction direction) -> Path {
            return {path_loss(port, arrival, direction), levels_of(olt, port, arrival, direction)};
        };
        found.onus[index].up = path_of(Direction::up);
        found.onus[index].down = path_of(Direction::down);
        found.onus[index].shines = shines(port.record(arrival.mac));
    }
    found.blinded = is_blinded(olt, port);
    for (size_t index = 0; index < port.arrivals.size(); ++index)
        look(olt, port, index);
    look_at_port(olt, port);
}

bool LightWatch::look(const Olt &olt, const PonPort &port, size_t arrival)
{
    Port &found = ports.at(port.number - 1);
    Onu &onu = found.onus.at(arrival);
    const OnuRecord &record = port.record(port.arrivals[arrival].mac);
    onu.laser.age(record.added_hours);
    found.changes.set(arrival, first_change_upstream(onu, record, found.blinded, olt.now()));

    std::optional<ModelTime> time_out;
    if (const auto fails = time_out_of(olt, port, port.arrivals[arrival])) time_out = std::max(fails->at, olt.now());
    found.time_outs.set(arrival, time_out);

    const Range received = range_of(record.down, onu.down.levels);
    const Range launch{received.least + onu.down.loss, received.below + onu.down.loss};
    const bool another_launch = std::exchange(onu.launch, launch) != launch;
    const bool shone = std::exchange(onu.shines, shines(record));
    return another_launch || shone || onu.shines;
}

void LightWatch::look_at_port(const Olt &olt, const PonPort &port)
{
    Port &found = ports.at(port.number - 1);
    if (const bool blinded = is_blinded(olt, port); blinded != found.blinded) {
        found.blinded = blinded;
        for (size_t index = 0; index < port.arrivals.size(); ++index)
            look(olt, port, index);
    }
    Range launch; // with which all ONUs receive as they do
    for (const Onu &onu : found.onus) {
        launch.least = std::max(launch.least, onu.launch.least);
        launch.below = std::min(launch.below, onu.launch.below);
    }
    const uint64_t second = olt.now() / ms_per_second;
    const Module &module = *olt.module(port.number);
    found.all_at = std::nullopt;
    if (found.blinded != known_blinded(olt, port) || !launch.contains(module.launch_level(second)))
        found.all_at = olt.now();
    else if (const auto too_low = first_below(module, launch.least, second))
        found.all_at = *too_low * ms_per_second;
}

// Returns when the light of the ONU at the port is no longer as its record says, which is now at the earliest.
std::optional<ModelTime> LightWatch::first_change_upstream(const Onu &onu, const OnuRecord &record, bool blinded,
                                                           ModelTime now)
{
    const bool rogue = shines(record);
    if ((blinded || rogue) && record.up.light != Light::lost) return now;
    if (blinded && !rogue) return std::nullopt;
    const auto &[loss, levels] = onu.up;
    const uint64_t second = now / ms_per_second;
    const int32_t received = onu.laser.power(second) - loss;
    Range range = range_of(record.up, levels);
    // The light of a rogue ONU is lost in either case. What counts is whether the ONU blinds the port.
    if (rogue) range = received < levels.loss ? Range{.below = levels.loss} : Range{.least = levels.loss};
    if (!range.contains(received)) return now;
    const std::optional<uint64_t> outside = onu.laser.first_outside({range.least + loss, range.below + loss}, second);
    if (!outside) return std::nullopt;
    return *outside * ms_per_second;
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
