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
    for (const auto &[key, record] : change.of<OnuRecord>()) {
        concerned.at(key.pon_port - 1) = true;
        const PonPort &port = *olt.port(key.pon_port);
        std::map<Mac, uint32_t> &weak = ports.at(key.pon_port - 1).weak;
        weak.erase(key.mac);
        const Arrival *arrival = port.arrived(key.mac);
        if (!arrival || !record || record->light != Light::degraded) continue;
        // The weakness is at least 1: light that is good again is still held to be degraded until that is decided anew.
        const int32_t received = received_level(olt, port, *arrival, olt.now());
        weak[key.mac] = std::max(1u, ponsim::weakness(received, sensitivity(olt, port, *arrival)));
    }
    for (const auto &[key, damage] : change.of<Damage>())
        concerned.at(key.pon_port - 1) = true;
    for (const auto &[cage, record] : change.of<ModuleRecord>())
        if (olt.port(cage)) concerned.at(cage - 1) = true;
    for (const auto &[key, block] : change.of<Block>())
        if (is_mpcp(key)) concerned.at(key.pon_port - 1) = true;
    for (const PonPort &port : olt.ports())
        if (concerned[port.number - 1]) look(olt, port);
}

uint32_t LightWatch::weakness(uint32_t pon_port, const Mac &mac) const
{
    const std::map<Mac, uint32_t> &weak = ports.at(pon_port - 1).weak;
    const auto found = weak.find(mac);
    return found == weak.end() ? 0 : found->second;
}

std::optional<ModelTime> LightWatch::next() const
{
    std::optional<ModelTime> first;
    for (const Port &port : ports)
        if (port.next && (!first || *port.next < *first)) first = port.next;
    return first;
}

bool LightWatch::is_due(uint32_t pon_port, ModelTime now) const
{
    const std::optional<ModelTime> &next = ports.at(pon_port - 1).next;
    return next && *next <= now;
}

void LightWatch::look(const Olt &olt, const PonPort &port)
{
    std::optional<ModelTime> &next = ports.at(port.number - 1).next;
    next.reset();
    const auto consider = [&](ModelTime time) { next = std::min(next.value_or(time), time); };
    const bool blinded = is_blinded(olt, port);
    if (blinded != known_blinded(olt, port)) consider(olt.now());
    const uint64_t second = olt.now() / ms_per_second;
    for (const Arrival &arrival : port.arrivals) {
        const Standing standing = standing_of(olt, port, arrival);
        const bool rogue = shines(port.record(arrival.mac));
        if ((blinded || rogue) && standing.light != Light::lost) consider(olt.now());
        if (blinded && !rogue) continue;
        const Levels levels = levels_of(olt, port, arrival);
        const int32_t loss = path_loss(port, arrival);
        const OnuLaser laser(olt, port, arrival.mac);
        const int32_t received = laser.power(second) - loss;
        Range range = range_of(standing, levels);
        // The light of a rogue ONU is lost in either case. What counts is whether the ONU blinds the port.
        if (rogue) range = received < levels.loss ? Range{.below = levels.loss} : Range{.least = levels.loss};
        if (!range.contains(received)) {
            consider(olt.now());
            continue;
        }
        const std::optional<uint64_t> outside = first_outside(laser, {range.least + loss, range.below + loss}, second);
        if (outside) consider(*outside * ms_per_second);
    }
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
