#include "diagnosis/health.h"

#include <algorithm>
#include <set>

#include "text/words.h"

namespace ponctl
{
namespace
{

constexpr const char *no_answer = "the service did not say";

std::string counted(size_t count, const std::string &one, const std::string &several)
{
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

HealthCheck check_service(const HealthFacts &facts)
{
    if (!facts.olt) return {"service", Condition::unknown, no_answer};
    return {"service", Condition::ok, *facts.olt + (facts.now ? ", up " + span_text(*facts.now) : "")};
}

// Alarms of ONUs are judged with the ONUs: somebody always switches one off.
HealthCheck check_alarms(const HealthFacts &facts, Health &health)
{
    if (!facts.alarms) return {"alarms", Condition::unknown, no_answer};
    HealthCheck check{"alarms"};
    size_t of_onus = 0;
    std::vector<std::string> names;
    for (const AlarmFact &alarm : *facts.alarms) {
        if (!alarm.active) continue;
        ++health.active_alarms[alarm.severity];
        if (!alarm.mac.empty()) {
            ++of_onus;
            continue;
        }
        check.condition =
            worse(check.condition, alarm.severity == "critical" ? Condition::critical : Condition::warning);
        names.push_back(alarm.subject() + ": " + alarm.name);
    }
    check.summary = names.empty() ? "no alarm of a port or uplink" : text::join(names);
    check.summary += "; " + counted(of_onus, "alarm of ONUs", "alarms of ONUs");
    return check;
}

// Returns the ONUs, as port and MAC address, that said that they lost their power.
std::set<std::pair<uint32_t, std::string>> without_power(const HealthFacts &facts)
{
    std::set<std::pair<uint32_t, std::string>> found;
    if (facts.alarms)
        for (const AlarmFact &alarm : *facts.alarms)
            if (alarm.active && alarm.name == "dying_gasp") found.emplace(alarm.port, alarm.mac);
    return found;
}

HealthCheck check_onus(const HealthFacts &facts, const HealthLimits &limits, Health &health)
{
    if (!facts.onus) return {"onus", Condition::unknown, no_answer};
    struct OfPort {
        uint32_t bound = 0, lost = 0;
    };
    std::map<uint32_t, OfPort> ports;
    const auto switched_off = without_power(facts);
    for (const OnuFact &onu : *facts.onus) {
        health.waiting += onu.state == "waiting";
        if (!onu.id) continue;
        ++health.bound;
        ++ports[onu.port].bound;
        health.online += onu.state == "online";
        if (onu.state != "offline") continue;
        ++health.offline;
        if (switched_off.contains({onu.port, onu.mac}))
            ++health.without_power;
        else
            ++ports[onu.port].lost;
    }
    uint32_t lost = 0;
    for (const auto &[port, of_port] : ports) {
        lost += of_port.lost;
        if (of_port.lost == of_port.bound && of_port.bound > 1) health.dark_ports.push_back(port);
    }
    HealthCheck check{"onus"};
    check.summary = std::to_string(health.online) + " of " + std::to_string(health.bound) + " ONUs online";
    if (health.offline > 0)
        check.summary += ", " + std::to_string(health.offline) + " offline (" + std::to_string(health.without_power) +
                         " without power)";
    if (health.waiting > 0) check.summary += ", " + std::to_string(health.waiting) + " waiting";
    for (const uint32_t port : health.dark_ports)
        check.summary += ", port " + std::to_string(port) + " is dark";
    if (!health.dark_ports.empty() || (lost > 0 && lost * 100 >= limits.critical * health.bound))
        check.condition = Condition::critical;
    else if (lost > 0 && lost * 100 >= limits.warning * health.bound)
        check.condition = Condition::warning;
    return check;
}

HealthCheck check_light(const HealthFacts &facts, Health &health)
{
    if (!facts.light) return {"light", Condition::unknown, no_answer};
    std::vector<std::string> names;
    for (const LightFact &light : *facts.light) {
        const auto limits = facts.limits.find(light.port);
        if (limits == facts.limits.end() || !light.at_olt || *light.at_olt >= limits->second.weak) continue;
        names.push_back(std::to_string(light.port) + "/" + std::to_string(light.onu_id));
    }
    health.weak_light = static_cast<uint32_t>(names.size());
    if (names.empty()) return {"light", Condition::ok, "no ONU with weak light"};
    constexpr size_t most = 8;
    const std::string more = names.size() > most ? " and more" : "";
    names.resize(std::min(names.size(), most));
    return {"light", Condition::warning,
            counted(health.weak_light, "ONU", "ONUs") + " with weak light: " + text::join(names) + more};
}

HealthCheck check_modules(const HealthFacts &facts)
{
    if (!facts.modules) return {"modules", Condition::unknown, no_answer};
    HealthCheck check{"modules"};
    std::vector<std::string> names;
    for (const ModuleFact &module : *facts.modules) {
        // What a port receives is the light of an ONU, and is judged with the light.
        if (module.state.empty() || module.state == "normal" || module.quantity == "received power") continue;
        check.condition =
            worse(check.condition, module.state.ends_with("alarm") ? Condition::critical : Condition::warning);
        names.push_back("port " + std::to_string(module.port) + ": " + module.quantity + " " + module.state);
    }
    check.summary = names.empty() ? "all modules are within their thresholds" : text::join(names);
    return check;
}

} // namespace

std::string_view word_of(Condition condition)
{
    constexpr std::array<std::string_view, 4> words{"ok", "warning", "critical", "unknown"};
    return words[static_cast<size_t>(condition)];
}

Condition worse(Condition one, Condition other)
{
    constexpr std::array order{Condition::ok, Condition::warning, Condition::unknown, Condition::critical};
    return std::ranges::find(order, one) > std::ranges::find(order, other) ? one : other;
}

Health examine(const HealthFacts &facts, const HealthLimits &limits)
{
    Health health;
    health.checks = {check_service(facts), check_alarms(facts, health), check_onus(facts, limits, health),
                     check_light(facts, health), check_modules(facts)};
    std::vector<std::string> wrong;
    for (const HealthCheck &check : health.checks) {
        health.condition = worse(health.condition, check.condition);
        if (check.condition != Condition::ok) wrong.push_back(std::string(check.name) + ": " + check.summary);
    }
    health.summary =
        wrong.empty() ? health.checks[2].summary + ", no alarm of a port or uplink" : text::join(wrong, "; ");
    return health;
}

} // namespace ponctl
