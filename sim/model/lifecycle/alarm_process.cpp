#include "model/lifecycle/alarm_process.h"

#include <algorithm>

#include "model/alarm/alarms.h"
#include "model/alarm/light_reasons.h"

namespace ponsim
{
namespace
{

// Returns another port on whose fibre an ONU with this address is.
uint32_t other_port_of(const Olt &olt, const AlarmKey &key)
{
    const auto other = std::ranges::find_if(
        olt.ports(), [&](const PonPort &port) { return port.number != key.pon_port && port.ranged(key.mac); });
    return other == olt.ports().end() ? 0 : other->number;
}

AlarmReason reason_of(const Olt &olt, const AlarmKey &key)
{
    const Alarm alarm{key.alarm};
    const auto light = [&](Direction direction) {
        const PonPort &port = *olt.port(key.pon_port);
        return light_reason(olt, port, *port.arrived(key.mac), direction);
    };
    switch (alarm) {
    case Alarm::degraded:
    case Alarm::receive_overload:
        return light(Direction::up);
    case Alarm::onu_degraded:
    case Alarm::onu_overload:
        return light(Direction::down);
    case Alarm::power_low:
        return {olt.module(key.pon_port)->record().dimmed > 0 ? AlarmCause::transmitter : AlarmCause::age};
    case Alarm::bias_high:
        return {AlarmCause::age};
    case Alarm::rogue:
        return rogue_reason(*olt.port(key.pon_port));
    case Alarm::uni_loop:
        return {AlarmCause::loop};
    case Alarm::wrong_port:
        return {.cause = AlarmCause::elsewhere, .other_port = olt.find(key.mac)->pon_port};
    case Alarm::same_mac:
        return {.cause = AlarmCause::same_mac, .other_port = other_port_of(olt, key)};
    case Alarm::uplink_down:
        return {AlarmCause::phy};
    default:
        return {AlarmCause::command};
    }
}

// When the port's loss ends, the ONUs that are still not heard have a cause of their own.
void part_from_port(const Olt &olt, const PonPort &port, Change &change)
{
    for (const auto &[at, kept] : port.alarms) {
        const AlarmKey key{port.number, at.mac, at.alarm, at.unit};
        if (!kept.active() || kept.reason.cause != AlarmCause::port_los) continue;
        const Arrival *arrival = port.arrived(at.mac);
        if (!arrival || port.record(at.mac).heard()) continue;
        AlarmRecord record = kept;
        record.reason = loss_reason(olt, port, *arrival);
        change.put<AlarmRecord>(key, record);
    }
}

std::optional<ModelTime> next_alarm(const Olt &olt)
{
    if (olt.alarm_watch().pending().empty()) return std::nullopt;
    return olt.now();
}

Change follow_conditions(const Olt &olt)
{
    Change change;
    for (const auto &[key, raised] : olt.alarm_watch().pending()) {
        if (raised) {
            raise(olt, key, reason_of(olt, key), change);
            continue;
        }
        end(olt, key, change);
        if (Alarm{key.alarm} == Alarm::port_los) part_from_port(olt, *olt.port(key.pon_port), change);
    }
    return change;
}

} // namespace

const Process alarm_process{next_alarm, follow_conditions};

} // namespace ponsim
