#include "watch/watcher.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace front
{
namespace
{

Table table_of(FactKind kind)
{
    switch (kind) {
    case FactKind::alarm:
        return Table::alarms;
    case FactKind::light:
        return Table::optics;
    case FactKind::loop:
        return Table::loops;
    case FactKind::upgrade:
        return Table::upgrades;
    case FactKind::module:
        return Table::modules;
    case FactKind::reach:
    case FactKind::onu:
        break;
    }
    return Table::onus;
}

// The alarms of an OLT say why an ONU is offline, so they must not be older than its state.
bool is_complete(FactKind kind, const Snapshot &snapshot)
{
    if (kind != FactKind::onu) return true;
    const TableState &alarms = snapshot.state(Table::alarms);
    return alarms.stale() || (alarms.generation > 0 && alarms.read >= snapshot.state(Table::onus).read);
}

bool is_well(const FactKey &key, const Fact *fact)
{
    if (!fact) return true;
    switch (key.kind) {
    case FactKind::light:
        return fact->value == "well";
    case FactKind::module:
        return fact->value == "normal";
    default:
        return false;
    }
}

std::optional<EventKind> onu_event(const Fact *after)
{
    if (!after) return EventKind::onu_removed;
    if (after->value == "online") return EventKind::onu_online;
    if (after->value == "offline") return EventKind::onu_offline;
    if (after->value == "waiting") return EventKind::onu_waiting;
    return EventKind::onu_refused;
}

std::optional<EventKind> alarm_event(const FactKey &key, bool raised)
{
    if (key.detail.starts_with("uni_loop")) return std::nullopt; // the loop itself is told of
    if (key.detail == "rogue") return raised ? EventKind::rogue_found : EventKind::rogue_gone;
    if (key.detail.starts_with("uplink_down")) return raised ? EventKind::link_down : EventKind::link_up;
    return raised ? EventKind::alarm_raised : EventKind::alarm_cleared;
}

// Returns what a change of a fact is told as, if it is told at all.
std::optional<EventKind> event_of(const FactKey &key, const Fact *before, const Fact *after)
{
    const bool was_well = is_well(key, before), well = is_well(key, after);
    switch (key.kind) {
    case FactKind::reach:
        return after->value == "lost" ? EventKind::olt_lost : EventKind::olt_back;
    case FactKind::onu:
        return onu_event(after);
    case FactKind::alarm:
        return alarm_event(key, after != nullptr);
    case FactKind::upgrade:
        if (!after || (after->value != "done" && after->value != "failed")) return std::nullopt;
        return after->value == "done" ? EventKind::upgrade_done : EventKind::upgrade_failed;
    case FactKind::light:
        if (was_well == well) return std::nullopt;
        return well ? EventKind::light_well : EventKind::light_low;
    case FactKind::loop:
        if (was_well == well) return std::nullopt;
        return well ? EventKind::loop_gone : EventKind::loop_found;
    case FactKind::module:
        if (well && was_well) return std::nullopt;
        return well ? EventKind::module_well : EventKind::module_alarm;
    }
    return std::nullopt;
}

// What is measured changes all the time, and is not kept.
bool is_kept_alike(const Fact &one, const Fact &other)
{
    return std::tie(one.value, one.onu_id, one.cause, one.place) ==
           std::tie(other.value, other.onu_id, other.cause, other.place);
}

// Returns ids in order as a text: 1-5,9.
std::string text_of_ids(const std::vector<uint32_t> &ids)
{
    std::string text;
    for (size_t first = 0, behind; first < ids.size(); first = behind) {
        for (behind = first + 1; behind < ids.size() && ids[behind] == ids[behind - 1] + 1;)
            ++behind;
        if (!text.empty()) text += ",";
        text += std::to_string(ids[first]);
        if (behind > first + 1) text += "-" + std::to_string(ids[behind - 1]);
    }
    return text;
}

// Joins the events of one kind, port and cause. What they do not have in common is left out.
std::vector<Event> together(const std::vector<Event> &single)
{
    std::vector<Event> joined;
    std::map<std::tuple<EventKind, uint32_t, std::string, std::string, std::string>, size_t> places;
    std::vector<std::vector<uint32_t>> ids;
    for (const Event &event : single) {
        const auto [place, is_new] =
            places.try_emplace({event.kind, event.port, event.detail, event.cause, event.place}, joined.size());
        if (is_new) {
            joined.push_back(event);
            ids.emplace_back();
        } else {
            Event &first = joined[place->second];
            ++first.count;
            first.onu_id.reset();
            first.mac.clear();
            first.measure.reset();
        }
        if (event.onu_id) ids[place->second].push_back(*event.onu_id);
    }
    for (size_t i = 0; i < joined.size(); ++i) {
        if (joined[i].count == 1) continue;
        std::ranges::sort(ids[i]);
        joined[i].onus = text_of_ids(ids[i]);
    }
    return joined;
}

} // namespace

void Watcher::add_event(const FactKey &key, const Fact *before, const Fact *after, UnixTime now,
                        std::vector<Event> &events) const
{
    const std::optional<EventKind> kind = event_of(key, before, after);
    if (!kind) return;
    const Fact &fact = after ? *after : *before;
    std::string detail = key.detail;
    if (key.kind == FactKind::module) detail += ": " + fact.value;
    if (*kind == EventKind::link_down || *kind == EventKind::link_up) detail.clear();
    events.push_back({.at = now,
                      .olt = olt,
                      .kind = *kind,
                      .port = key.port,
                      .onu_id = fact.onu_id,
                      .mac = key.mac,
                      .detail = detail,
                      .cause = fact.cause,
                      .place = fact.place,
                      .measure = fact.measure});
}

void Watcher::look_at(FactKind kind, const Snapshot &snapshot, UnixTime now, Found &found)
{
    Facts seen = facts_of(kind, snapshot, known.facts, limits);
    const bool first_look = !known.kinds.test(static_cast<size_t>(kind));
    std::vector<Event> events;
    const auto changed = [&](const FactKey &key, const Fact *before, const Fact *after) {
        if (!first_look) add_event(key, before, after, now, events);
    };

    for (auto &[key, fact] : seen) {
        const auto old = known.facts.find(key);
        const Fact *const before = old == known.facts.end() ? nullptr : &old->second;
        const bool is_new_value = !before || before->value != fact.value;
        fact.since = !is_new_value ? before->since : first_look ? 0 : now;
        if (is_new_value) changed(key, before, &fact);
        if (!before || !is_kept_alike(*before, fact)) found.changes.push_back({key, fact});
    }
    const auto first = known.facts.lower_bound({kind, 0, {}, {}});
    auto behind = first;
    for (; behind != known.facts.end() && behind->first.kind == kind; ++behind) {
        if (seen.contains(behind->first)) continue;
        changed(behind->first, &behind->second, nullptr);
        found.changes.push_back({behind->first, std::nullopt});
    }
    known.facts.erase(first, behind);
    known.facts.merge(seen);
    known.kinds.set(static_cast<size_t>(kind));
    std::ranges::move(together(events), std::back_inserter(found.events));
}

Watcher::Found Watcher::look(const Snapshot &snapshot, UnixTime now)
{
    Found found;
    for (size_t index = 0; index < fact_kind_count; ++index) {
        const FactKind kind = static_cast<FactKind>(index);
        const TableState &state = snapshot.state(table_of(kind));
        const bool is_reach = kind == FactKind::reach;
        if (!is_reach && (state.generation == generations[index] || !is_complete(kind, snapshot))) continue;
        if (is_reach && state.generation + state.failures == 0) continue;
        generations[index] = state.generation;
        look_at(kind, snapshot, now, found);
    }
    return found;
}

} // namespace front
