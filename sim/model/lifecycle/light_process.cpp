#include "model/lifecycle/light_process.h"

#include <string>
#include <string_view>
#include <utility>

#include "model/lifecycle/debug.h"
#include "model/lifecycle/registration.h"
#include "model/olt/light.h"
#include "model/olt/standing.h"

namespace ponsim
{
namespace
{

std::string_view event_of(Light before, Light now)
{
    switch (now) {
    case Light::good:
    case Light::degraded:
        if (before == Light::lost) return "light is back";
        return now == Light::good ? "light good" : "light degraded";
    case Light::lost:
        return "light lost";
    case Light::overloaded:
        return "light overloads the receiver";
    case Light::saturated:
        return "light is too strong to be heard";
    }
    return {};
}

bool same_light(const Reception &one, const Reception &other)
{
    return one.light == other.light && one.steps == other.steps;
}

// Adds to the change that the light of this direction is received like this.
void become(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction, Reception now,
            Change &change)
{
    const Mac &mac = arrival.mac;
    OnuRecord &record = edit(change, port, mac);
    Reception &reception = record.reception(direction);
    if (same_light(reception, now)) return;
    if (now.light != Light::good) now.since = !now.heard() && !reception.heard() ? reception.since : olt.now();
    const Light before = std::exchange(reception, now).light;
    // Each light has its own odds that the frames of a registration pass. A window that opens at this very moment is
    // too early.
    if (record.powered && record.phase == Phase::discovery && port.limits.contain(arrival.distance))
        begin_registration(olt, port, mac, olt.now() + 1, change);
    if (before == now.light) return;
    const std::string event =
        (direction == Direction::up ? "" : "downstream ") + std::string(event_of(before, now.light));
    report(olt, DebugSwitch::onu, port.number, mac, event, change);
}

void notice_blindness(const Olt &olt, const PonPort &port, bool blinded, Change &change)
{
    if (blinded == known_blinded(olt, port)) return;
    ModuleRecord record = olt.module(port.number)->record();
    record.raised ^= rogue_bit;
    change.put<ModuleRecord>(port.number, record);
}

Reception received_now(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction,
                       const Reception &before)
{
    const int32_t received = received_level(olt, port, arrival, direction, olt.now());
    const Levels levels = levels_of(olt, port, arrival, direction);
    return range_of(before, levels).contains(received) ? before : reception_at(received, levels);
}

std::optional<ModelTime> next_light(const Olt &olt)
{
    return olt.light_watch().next();
}

Change decide_lights(const Olt &olt)
{
    Change change;
    for (const PonPort &port : olt.ports()) {
        if (!olt.light_watch().is_due(port.number, olt.now())) continue;
        const bool blinded = olt.light_watch().is_blinded(olt, port);
        notice_blindness(olt, port, blinded, change);
        for (const size_t index : olt.light_watch().due(port.number, olt.now())) {
            const Arrival &arrival = port.arrivals[index];
            const OnuRecord &record = port.record(arrival.mac);
            for (const Direction direction : directions) {
                const Reception &before = record.reception(direction);
                const Reception now = blinded && direction == Direction::up
                                          ? Reception{.light = Light::lost}
                                          : received_now(olt, port, arrival, direction, before);
                // For a rogue ONU perhaps nothing changes, but its row in the change makes the next time move on.
                if (!same_light(now, before) || shines(record)) become(olt, port, arrival, direction, now, change);
            }
        }
    }
    return change;
}

} // namespace

const Process light_process{next_light, decide_lights};

} // namespace ponsim
