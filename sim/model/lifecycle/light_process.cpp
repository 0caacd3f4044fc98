#include "model/lifecycle/light_process.h"

#include <string_view>
#include <utility>

#include "model/lifecycle/alarms.h"
#include "model/lifecycle/debug.h"
#include "model/lifecycle/registration.h"
#include "model/olt/light.h"
#include "model/olt/standing.h"

namespace ponsim
{
namespace
{

// Returns whether the ONU is on the fibre, so that its loss would be noticed.
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
    const auto note = [&](std::string_view event) { report(olt, DebugSwitch::onu, port.number, mac, event, change); };
    if (light == Light::lost) {
        if (is_heard(olt, port, arrival)) raise(port, mac, Alarm::los, change);
        note("light lost");
    } else if (before == Light::lost) {
        note("light is back");
        // A window that opens at this very moment is too early.
        if (record.powered && record.phase != Phase::booting && port.reach().contains(arrival))
            begin_registration(olt, port, mac, olt.now() + 1, change);
    } else if (light == Light::degraded) {
        if (is_heard(olt, port, arrival)) raise(port, mac, Alarm::degraded, change);
        note("light degraded");
    } else {
        note("light good");
    }
}

void notice_blindness(const Olt &olt, const PonPort &port, bool blinded, Change &change)
{
    if (blinded == known_blinded(olt, port)) return;
    ModuleRecord record = olt.module(port.number)->record();
    record.raised ^= rogue_bit;
    change.put<ModuleRecord>(port.number, record);
    if (blinded) raise(port, port_itself, Alarm::rogue, change);
}

std::optional<ModelTime> next_light(const Olt &olt)
{
    return olt.light_watch().next();
}

// The ONUs of a port are looked at together, because a rogue ONU concerns them all.
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
            // For a rogue ONU perhaps nothing changes, but becoming what it was makes the next time move on.
            if (now != before || shines(port.record(arrival.mac))) become(olt, port, arrival, now.light, change);
        }
    }
    return change;
}

} // namespace

const Process light_process{next_light, decide_lights};

} // namespace ponsim
