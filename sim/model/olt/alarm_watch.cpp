#include "model/olt/alarm_watch.h"

#include <algorithm>
#include <iterator>

#include "bsp_pon.h"
#include "model/olt/interfaces.h"
#include "model/olt/olt.h"

namespace ponsim
{
namespace
{

// Alarms of a state are raised by their conditions.
constexpr Alarm states_of_onu[] = {Alarm::degraded,     Alarm::receive_overload, Alarm::onu_degraded,
                                   Alarm::onu_overload, Alarm::wrong_port,       Alarm::same_mac};
constexpr Alarm states_of_port[] = {Alarm::bias_high, Alarm::power_low, Alarm::rogue, Alarm::transmitter_off};

bool is_state(Alarm alarm)
{
    return alarm == Alarm::uni_loop || alarm == Alarm::uplink_down ||
           std::ranges::find(states_of_onu, alarm) != std::end(states_of_onu) ||
           std::ranges::find(states_of_port, alarm) != std::end(states_of_port);
}

bool too_strong(const Reception &reception)
{
    return reception.light == Light::overloaded || reception.light == Light::saturated;
}

// Returns whether the port hears an ONU that runs.
bool hears(const PonPort &port, const Arrival &arrival)
{
    if (!port.limits.contain(arrival.distance)) return false;
    const auto found = port.onus.find(arrival.mac);
    if (found == port.onus.end()) return true;
    const OnuRecord &record = found->second;
    return record.powered && record.phase != Phase::booting && record.heard();
}

bool holds_of_port(const Olt &olt, const PonPort &port, Alarm alarm)
{
    const Module &module = *olt.module(port.number);
    const bool noticed = module.record().raised >> static_cast<uint32_t>(alarm) & 1;
    switch (alarm) {
    case Alarm::bias_high:
    case Alarm::power_low:
        return noticed && module.laser_on();
    case Alarm::transmitter_off:
        return !module.laser_on();
    case Alarm::port_los:
        return std::ranges::none_of(port.arrivals, [&](const Arrival &arrival) { return hears(port, arrival); });
    default:
        return noticed;
    }
}

bool is_turned_away(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    const std::optional<uint32_t> onu_id = olt.id_at(port.number, arrival.mac);
    const Binding *binding = onu_id ? &*port.bindings[*onu_id] : nullptr;
    return !(binding && arrival.silent) && port.authentication.turns_away(arrival, binding);
}

// Returns whether an ONU with this address is on the fibre of another port.
bool is_elsewhere(const Olt &olt, const PonPort &port, const Mac &mac)
{
    return std::ranges::any_of(olt.ports(),
                               [&](const PonPort &other) { return other.number != port.number && other.ranged(mac); });
}

bool is_bound_elsewhere(const Olt &olt, const PonPort &port, const Mac &mac)
{
    const std::optional<OnuKey> key = olt.find(mac);
    return key && key->pon_port != port.number;
}

bool holds_of_onu(const Olt &olt, const PonPort &port, const Arrival &arrival, Alarm alarm)
{
    static const OnuRecord as_new;
    const auto found = port.onus.find(arrival.mac);
    const OnuRecord &record = found == port.onus.end() ? as_new : found->second;
    switch (alarm) {
    case Alarm::degraded:
        return record.up.light == Light::degraded && olt.on_fibre(port, arrival);
    case Alarm::onu_degraded:
        return record.down.light == Light::degraded && olt.on_fibre(port, arrival);
    case Alarm::receive_overload:
        return too_strong(record.up) && record.powered;
    case Alarm::onu_overload:
        return too_strong(record.down) && record.powered;
    case Alarm::rejected:
        return port.ranges(arrival) && port.refuses(arrival.mac);
    case Alarm::auth_failed:
        return port.ranges(arrival) && !port.refuses(arrival.mac) && is_turned_away(olt, port, arrival);
    case Alarm::los:
    case Alarm::onu_los:
        return !port.ranges(arrival) || !record.heard();
    case Alarm::wrong_port:
        return port.ranges(arrival) && is_bound_elsewhere(olt, port, arrival.mac) && !port.refuses(arrival.mac) &&
               !is_elsewhere(olt, port, arrival.mac);
    case Alarm::same_mac:
        return olt.alarm_watch().is_twin(port.number, arrival.mac) && port.ranges(arrival) &&
               is_elsewhere(olt, port, arrival.mac);
    case Alarm::same_loid:
        return record.powered && record.phase == Phase::authentication && port.limits.contain(arrival.distance);
    default: // the ONU has gone
        return !port.ranges(arrival);
    }
}

} // namespace

AlarmKey alarm_key(const PonPort &port, const Mac &mac, Alarm alarm)
{
    return {port.number, mac, static_cast<uint32_t>(alarm)};
}

bool holds(const Olt &olt, const AlarmKey &key)
{
    const Alarm alarm{key.alarm};
    if (alarm == Alarm::uplink_down) return !phy_control(olt, key.unit).link_up();
    if (alarm == Alarm::uni_loop) return olt.shut({key.pon_port, key.mac, key.unit});
    const PonPort &port = *olt.port(key.pon_port);
    if (key.mac == port_itself) return holds_of_port(olt, port, alarm);
    const AlarmRecord *record = olt.alarm(key);
    if (record && record->reason.cause == AlarmCause::test) return true; // a test has no cause that could end
    const Arrival *arrival = port.arrived(key.mac);
    // An ONU that was taken away is missed where it is bound.
    if (!arrival) return alarm == Alarm::los && olt.id_at(key.pon_port, key.mac);
    return holds_of_onu(olt, port, *arrival, alarm);
}

void AlarmWatch::start(const Olt &olt)
{
    waiting.clear();
    twins.clear();
    ByMac<uint32_t> homes; // the first port of each address
    for (const PonPort &port : olt.ports())
        for (const Arrival &arrival : port.arrivals)
            if (const auto [home, is_first] = homes.emplace(arrival.mac, port.number); !is_first)
                twins.insert({{home->second, arrival.mac}, {port.number, arrival.mac}});
    for (const PonPort &port : olt.ports())
        look_at_all(olt, port);
}

void AlarmWatch::follow(const Olt &olt, const Change &change, std::span<const std::pair<uint32_t, Mac>> moved)
{
    std::set<uint32_t> ports;   // all of whose ONUs the change concerns
    std::set<uint32_t> modules; // ports whose own alarms it concerns
    for (const auto &[key, record] : change.of<PortRecord>())
        ports.insert(key);
    for (const auto &[key, entry] : change.of<BlacklistEntry>())
        ports.insert(key.pon_port);
    for (const auto &[key, password] : change.of<LoidPassword>())
        ports.insert(key.pon_port);
    for (const auto &[key, block] : change.of<Block>()) {
        if (is_oui(key))
            for (const PonPort &port : olt.ports())
                ports.insert(port.number);
        if (key.channel == BSP_MSG_DEBUG && key.command == BSP_CMD_DEBUG_GE_PHY_SET)
            look(olt, {0, port_itself, static_cast<uint32_t>(Alarm::uplink_down), key.pon_port});
    }
    for (const auto &[cage, record] : change.of<ModuleRecord>())
        if (olt.port(cage)) modules.insert(cage);

    const auto onu = [&](uint32_t pon_port, const Mac &mac) {
        if (!ports.contains(pon_port)) look_at_onu(olt, *olt.port(pon_port), mac);
    };
    for (const auto &[key, record] : change.of<OnuRecord>())
        onu(key.pon_port, key.mac);
    for (const auto &[key, plugged] : change.of<PluggedOnu>())
        onu(key.pon_port, key.mac);
    // Where an ONU is bound matters also at the port where it is.
    for (const auto &[pon_port, mac] : moved)
        for (const PonPort &port : olt.ports())
            if (port.number == pon_port || port.arrived(mac)) onu(port.number, mac);
    for (const auto &[key, run] : change.of<UpgradeRun>())
        onu(key.pon_port, key.mac);
    for (const auto &[key, record] : change.of<LoopRecord>())
        look(olt, {key.pon_port, key.mac, static_cast<uint32_t>(Alarm::uni_loop), key.uni});
    for (const auto &[key, record] : change.of<AlarmRecord>())
        look(olt, key);
    for (const uint32_t pon_port : modules)
        look_at_port(olt, *olt.port(pon_port));
    for (const uint32_t pon_port : ports)
        look_at_all(olt, *olt.port(pon_port));
    look_at_twins(olt);
}

void AlarmWatch::look(const Olt &olt, const AlarmKey &key)
{
    const AlarmRecord *record = olt.alarm(key);
    const bool active = record && record->active();
    await(key, active, (active || is_state(Alarm{key.alarm})) && holds(olt, key));
}

void AlarmWatch::await(const AlarmKey &key, bool active, bool wanted)
{
    if (wanted != active)
        waiting.insert_or_assign(key, wanted);
    else if (!waiting.empty())
        waiting.erase(key);
}

// This is where a change of light ends up, so the ONU and its alarms are looked up once.
void AlarmWatch::look_at_onu(const Olt &olt, const PonPort &port, const Mac &mac)
{
    uint32_t active = 0; // a bit for each alarm
    const auto bit_of = [](uint32_t alarm) { return uint32_t{1} << alarm; };
    for (auto at = port.alarms.lower_bound({mac, 0}); at != port.alarms.end() && at->first.mac == mac; ++at) {
        const auto &[where, record] = *at;
        if (!record.active()) continue;
        if (is_state(Alarm{where.alarm}) && where.unit == 0)
            active |= bit_of(where.alarm);
        else
            look(olt, {port.number, mac, where.alarm, where.unit});
    }
    const Arrival *own = port.arrived(mac);
    for (const Alarm alarm : states_of_onu) {
        const AlarmKey key = alarm_key(port, mac, alarm);
        if (active & bit_of(key.alarm))
            look(olt, key);
        else
            await(key, false, own && holds_of_onu(olt, port, *own, alarm));
    }
    // What one ONU became can only end the loss of all of them.
    const AlarmKey dark = alarm_key(port, port_itself, Alarm::port_los);
    const AlarmRecord *record = olt.alarm(dark);
    const Arrival *arrival = record && record->active() ? port.arrived(mac) : nullptr;
    if (arrival && hears(port, *arrival)) waiting.insert_or_assign(dark, false);
}

void AlarmWatch::look_at_port(const Olt &olt, const PonPort &port)
{
    for (const Alarm alarm : states_of_port)
        look(olt, alarm_key(port, port_itself, alarm));
}

// What becomes of one of them concerns the other.
void AlarmWatch::look_at_twins(const Olt &olt)
{
    for (const auto &[pon_port, mac] : twins)
        for (const Alarm alarm : {Alarm::wrong_port, Alarm::same_mac})
            look(olt, alarm_key(*olt.port(pon_port), mac, alarm));
}

void AlarmWatch::look_at_all(const Olt &olt, const PonPort &port)
{
    look_at_port(olt, port);
    look(olt, alarm_key(port, port_itself, Alarm::port_los));
    for (const Arrival &arrival : port.arrivals)
        look_at_onu(olt, port, arrival.mac);
    // An ONU that never arrived may have alarms in a state file of before.
    for (const auto &[at, record] : port.alarms)
        look(olt, {port.number, at.mac, at.alarm, at.unit});
}

} // namespace ponsim
