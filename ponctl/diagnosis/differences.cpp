#include "diagnosis/differences.h"

#include <map>
#include <string>
#include <tuple>

#include "diagnosis/why.h"

namespace ponctl
{
namespace
{

// An ONU or a port has an alarm of each name once, except that each UNI port and each uplink has its own.
using AlarmId = std::tuple<uint32_t, std::string, std::string, std::string>;

AlarmId id_of(const AlarmFact &alarm)
{
    const bool several = alarm.name.starts_with("uni_") || alarm.name.starts_with("uplink_");
    return {alarm.port, alarm.mac, alarm.name, several ? alarm.place : std::string()};
}

std::map<AlarmId, const AlarmFact *> by_id(const std::vector<AlarmFact> &alarms)
{
    std::map<AlarmId, const AlarmFact *> found;
    for (const AlarmFact &alarm : alarms)
        found[id_of(alarm)] = &alarm;
    return found;
}

using OnuPlace = std::pair<uint32_t, std::string>; // port and MAC address

std::map<OnuPlace, const OnuFact *> by_place(const std::vector<OnuFact> &onus)
{
    std::map<OnuPlace, const OnuFact *> found;
    for (const OnuFact &onu : onus)
        found[{onu.port, onu.mac}] = &onu;
    return found;
}

constexpr const char *gone = "gone";

} // namespace

std::vector<AlarmEvent> alarm_events(const std::vector<AlarmFact> &before, const std::vector<AlarmFact> &now)
{
    std::vector<AlarmEvent> events;
    const auto old = by_id(before), current = by_id(now);
    for (const auto &[id, alarm] : current) {
        const auto found = old.find(id);
        const AlarmFact *was = found == old.end() ? nullptr : found->second;
        const bool anew = !was || was->raised != alarm->raised || (!was->active && alarm->active);
        if (anew) events.push_back({"raised", *alarm});
        if (!alarm->active && (anew || was->active)) events.push_back({"cleared", *alarm});
    }
    for (const auto &[id, alarm] : old)
        if (alarm->active && !current.contains(id)) events.push_back({"removed", *alarm});
    return events;
}

std::vector<OnuEvent> onu_events(const std::vector<OnuFact> &before, const std::vector<OnuFact> &now,
                                 const std::vector<AlarmFact> &alarms)
{
    std::vector<OnuEvent> events;
    const auto old = by_place(before), current = by_place(now);
    for (const auto &[place, onu] : current) {
        const auto found = old.find(place);
        const std::string was = found == old.end() ? gone : found->second->state;
        if (was == onu->state) continue;
        OnuEvent event{*onu, was, onu->state, {}};
        const AlarmFact *reason = onu->state == "online" ? nullptr : reason_of(alarms, *onu);
        if (reason && reason->active) event.cause = *reason;
        events.push_back(std::move(event));
    }
    for (const auto &[place, onu] : old) {
        if (current.contains(place)) continue;
        OnuEvent event{*onu, onu->state, gone, {}};
        const AlarmFact *reason = reason_of(alarms, *onu);
        if (reason && reason->active) event.cause = *reason;
        events.push_back(std::move(event));
    }
    return events;
}

} // namespace ponctl
