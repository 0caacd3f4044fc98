#include "model/light_watch.h"

#include <algorithm>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/alarms.h"
#include "model/debug.h"
#include "model/light.h"
#include "model/module.h"
#include "model/mpcp.h"
#include "model/optics.h"
#include "model/plant.h"
#include "model/process.h"
#include "model/registration.h"
#include "model/search.h"

namespace ponsim
{
namespace
{

constexpr uint64_t day = 2 * half_day;
constexpr uint64_t horizon = 1000 * 365; // days that are looked ahead

constexpr int32_t no_limit = 1000000; // 0.01 dBm

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

Levels levels_of(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    return {sensitivity(olt, port, arrival), olt.module(port.number)->loss_threshold()};
}

// How an ONU stands once it does not stand as before.
Standing standing_at(int32_t received, const Levels &levels)
{
    if (received < levels.loss) return {Light::lost, 0};
    const uint32_t steps = weakness(received, levels.good);
    return {steps == 0 ? Light::good : Light::degraded, steps};
}

// The received power with which an ONU stays as it stands.
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

// The first second from `from` on at which the power of the laser is out of the range that it is in then. Power is
// least at noon, and greatest at the end of this day: none that follows has more.
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

// Whether the ONU sends all the time. One that boots has its laser off.
bool shines(const OnuRecord &record)
{
    return record.rogue && record.powered && record.phase != Phase::booting;
}

bool reaches(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    return received_level(olt, port, arrival, olt.now()) >= olt.module(port.number)->loss_threshold();
}

bool is_blinded(const Olt &olt, const PonPort &port)
{
    return std::ranges::any_of(port.onus, [&](const auto &onu) {
        const Arrival *arrival = port.arrived(onu.first);
        return arrival && shines(onu.second) && reaches(olt, port, *arrival);
    });
}

constexpr uint32_t rogue_bit = 1u << static_cast<uint32_t>(Alarm::rogue);

// Whether that has been seen.
bool known_blinded(const Olt &olt, const PonPort &port)
{
    return olt.module(port.number)->record().raised & rogue_bit;
}

Standing standing_of(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    return {port.record(arrival.mac).light, olt.light_watch().weakness(port.number, arrival.mac)};
}

// The ONU is on the fibre, and would be missed.
bool is_heard(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    return olt.online(port, arrival.mac) || olt.waits(port, arrival);
}

void become(const Olt &olt, const PonPort &port, const Arrival &arrival, Light light, Change &change)
{
    const Mac &mac = arrival.mac;
    OnuRecord &record = edit(change, port, mac);
    const Light before = std::exchange(record.light, light);
    if (light == before) return;
    const auto tell = [&](std::string_view event) { report(olt, DebugSwitch::onu, port.number, mac, event, change); };
    if (light == Light::lost) {
        if (is_heard(olt, port, arrival)) raise(port, mac, Alarm::los, change);
        tell("light lost");
    } else if (before == Light::lost) {
        tell("light is back");
        // A window that opens at this very moment comes too early.
        if (record.powered && record.phase != Phase::booting && port.reach().contains(arrival))
            begin_registration(olt, port, mac, olt.now() + 1, change);
    } else if (light == Light::degraded) {
        if (is_heard(olt, port, arrival)) raise(port, mac, Alarm::degraded, change);
        tell("light degraded");
    } else {
        tell("light good");
    }
}

void notice_blindness(const Olt &olt, const PonPort &port, bool blinded, Change &change)
{
    if (blinded == known_blinded(olt, port)) return;
    ModuleRecord record = olt.module(port.number)->record();
    record.raised ^= rogue_bit;
    change.modules.push_back({port.number, record});
    if (blinded) raise(port, port_itself, Alarm::rogue, change);
}

std::optional<ModelTime> next_light(const Olt &olt)
{
    return olt.light_watch().next();
}

// The ONUs of a port are looked at together: a rogue one concerns them all.
Change decide_lights(const Olt &olt)
{
    Change change;
    for (const PonPort &port : olt.ports()) {
        if (!olt.light_watch().is_due(port.number, olt.now())) continue;
        const bool blinded = is_blinded(olt, port);
        notice_blindness(olt, port, blinded, change);
        for (const Arrival &arrival : port.arrivals) {
            const Standing before = standing_of(olt, port, arrival);
            Standing now{Light::lost, 0};
            if (!blinded) {
                const int32_t received = received_level(olt, port, arrival, olt.now());
                const Levels levels = levels_of(olt, port, arrival);
                now = range_of(before, levels).contains(received) ? before : standing_at(received, levels);
            }
            // Of a rogue ONU there may be nothing new; that it was looked at moves the next time on.
            if (now != before || shines(port.record(arrival.mac))) become(olt, port, arrival, now.light, change);
        }
    }
    return change;
}

} // namespace

const Process light_process{next_light, decide_lights};

void LightWatch::start(const Olt &olt)
{
    ports.assign(olt.ports().size(), {});
    for (const PonPort &port : olt.ports())
        look(olt, port);
}

void LightWatch::follow(const Olt &olt, const Change &change)
{
    std::vector<bool> concerned(ports.size());
    for (const auto &[pon_port, mac, record] : change.onus) {
        concerned.at(pon_port - 1) = true;
        const PonPort &port = *olt.port(pon_port);
        std::map<Mac, uint32_t> &weak = ports.at(pon_port - 1).weak;
        weak.erase(mac);
        const Arrival *arrival = port.arrived(mac);
        if (!arrival || record.light != Light::degraded) continue;
        // At least one: until it is decided anew, light that is good again is still held to be degraded.
        const int32_t received = received_level(olt, port, *arrival, olt.now());
        weak[mac] = std::max(1u, ponsim::weakness(received, sensitivity(olt, port, *arrival)));
    }
    for (const auto &row : change.fibre)
        concerned.at(row.pon_port - 1) = true;
    for (const auto &row : change.modules)
        if (olt.port(row.cage)) concerned.at(row.cage - 1) = true;
    for (const auto &row : change.blocks)
        if (is_mpcp(row)) concerned.at(row.pon_port - 1) = true;
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
        // A rogue ONU is lost either way; what counts is whether it blinds the port.
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
