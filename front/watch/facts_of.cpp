#include <algorithm>
#include <array>

#include "text/hex.h"
#include "watch/fact.h"

namespace front
{
namespace
{

std::string text_of(const std::optional<view::Mac> &mac)
{
    return mac ? text::mac_text(*mac) : std::string();
}

// Returns for each ONU the active alarm that says why it is not online: the one that was raised last of those that can.
std::map<std::pair<uint32_t, view::Mac>, const view::onu_alarm *> reasons_in(std::span<const view::onu_alarm> alarms)
{
    static constexpr std::array<std::string_view, 10> reasons{
        "los",         "onu_los",    "dying_gasp", "deregistered", "oam_link_lost",
        "auth_failed", "wrong_port", "same_loid",  "same_mac",     "rejected",
    };
    std::map<std::pair<uint32_t, view::Mac>, const view::onu_alarm *> found;
    for (const view::onu_alarm &alarm : alarms) {
        if (!alarm.mac || alarm.state != "active" || std::ranges::find(reasons, alarm.name) == reasons.end()) continue;
        const view::onu_alarm *&last = found[{alarm.pon_port, *alarm.mac}];
        if (!last || alarm.raised.value_or(0) > last->raised.value_or(0)) last = &alarm;
    }
    return found;
}

void add_onus(Facts &facts, const Snapshot &snapshot)
{
    const auto reasons = reasons_in(rows_of(snapshot.alarms));
    for (const view::onu_info &onu : rows_of(snapshot.onus)) {
        Fact &fact = facts[{FactKind::onu, onu.pon_port, text::mac_text(onu.mac), {}}];
        // Of an ONU that is bound and waits elsewhere at once, the binding counts.
        if (!fact.value.empty() && !onu.onu_id) continue;
        fact = {.value = std::string(onu.state), .onu_id = onu.onu_id};
        if (onu.state == "online" || onu.state == "waiting") continue;
        const auto found = reasons.find({onu.pon_port, onu.mac});
        if (found == reasons.end()) continue;
        const view::onu_alarm &reason = *found->second;
        fact.cause = reason.cause == "unknown" ? reason.name : reason.cause;
        fact.place = reason.place.value_or("");
    }
}

void add_alarms(Facts &facts, const Snapshot &snapshot)
{
    for (const view::onu_alarm &alarm : rows_of(snapshot.alarms)) {
        if (alarm.state != "active") continue;
        facts[key_of(alarm)] = {.value = "active",
                                .onu_id = alarm.onu_id,
                                .cause = std::string(alarm.cause),
                                .place = std::string(alarm.place.value_or(""))};
    }
}

void add_light(Facts &facts, const Facts &before, const view::onu_optics_table &onu, const char *who,
               const std::optional<double> &power, const LightLimits &limits)
{
    const FactKey key{FactKind::light, onu.pon_port, text::mac_text(onu.mac), who};
    const auto old = before.find(key);
    if (!power) {
        if (old != before.end()) facts.insert(*old);
        return;
    }
    const bool was_low = old != before.end() && old->second.value == "low";
    const bool low = *power <= limits.low || (was_low && *power < limits.well);
    facts[key] = {.value = low ? "low" : "well", .onu_id = onu.onu_id, .measure = power};
}

void add_loops(Facts &facts, const Snapshot &snapshot)
{
    for (const view::loop_info &loop : rows_of(snapshot.loops))
        if (loop.state != "recovered")
            facts[{FactKind::loop, loop.pon_port, text::mac_text(loop.mac), std::to_string(loop.uni)}] = {
                .value = std::string(loop.state), .onu_id = loop.onu_id};
}

void add_upgrades(Facts &facts, const Snapshot &snapshot)
{
    for (const view::upgrade_base_info &onu : rows_of(snapshot.upgrades))
        if (onu.run)
            facts[{FactKind::upgrade, onu.pon_port, text::mac_text(onu.mac), {}}] = {
                .value = std::string(*onu.run), .onu_id = onu.onu_id, .cause = std::string(onu.reason.value_or(""))};
}

void add_modules(Facts &facts, const Snapshot &snapshot)
{
    for (const ModuleQuantity &quantity : rows_of(snapshot.modules))
        if (quantity.of.state)
            facts[{FactKind::module, quantity.cage, {}, std::string(quantity.of.quantity)}] = {
                .value = std::string(*quantity.of.state), .measure = quantity.of.value};
}

} // namespace

FactKey key_of(const view::onu_alarm &alarm)
{
    // Two uplinks, or two UNI ports, differ in the place alone.
    std::string detail(alarm.name);
    if ((!alarm.mac && alarm.pon_port == 0) || alarm.name == "uni_loop")
        detail.append(" ").append(alarm.place.value_or(""));
    return {FactKind::alarm, alarm.pon_port, text_of(alarm.mac), detail};
}

Facts facts_of(FactKind kind, const Snapshot &snapshot, const Facts &before, const Limits &limits)
{
    Facts facts;
    switch (kind) {
    case FactKind::reach:
        facts[{FactKind::reach, 0, {}, {}}] = {.value = snapshot.state(Table::onus).failed > 1 ? "lost" : "reached"};
        break;
    case FactKind::onu:
        add_onus(facts, snapshot);
        break;
    case FactKind::alarm:
        add_alarms(facts, snapshot);
        break;
    case FactKind::light:
        for (const view::onu_optics_table &onu : rows_of(snapshot.optics)) {
            add_light(facts, before, onu, "olt", onu.olt_rx_power, limits.olt);
            add_light(facts, before, onu, "onu", onu.rx_power, limits.onu);
        }
        break;
    case FactKind::loop:
        add_loops(facts, snapshot);
        break;
    case FactKind::upgrade:
        add_upgrades(facts, snapshot);
        break;
    case FactKind::module:
        add_modules(facts, snapshot);
        break;
    }
    return facts;
}

} // namespace front
