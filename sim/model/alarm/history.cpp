#include "model/alarm/history.h"

#include <map>
#include <vector>

namespace ponsim
{
namespace
{

// Where an active alarm is forgotten, somebody cleared it by command.
AlarmEvent event_of(const Olt &olt, const Entry<AlarmRecord> &entry, const AlarmRecord &before)
{
    const AlarmRecord *record = entry.record ? &*entry.record : nullptr;
    AlarmEvent event{.at = olt.now(),
                     .alarm = entry.key,
                     .onu_id = olt.id_at(entry.key.pon_port, entry.key.mac),
                     .active = record && record->active(),
                     .reason = record ? record->reason : before.reason};
    if (!record) event.reason.cause = AlarmCause::command;
    return event;
}

} // namespace

void add_events(const Olt &olt, Change &change)
{
    if (change.of<AlarmRecord>().empty()) return;
    const auto &history = olt.kept<AlarmEvent>();
    uint64_t number = history.empty() ? 0 : history.rbegin()->first;
    std::map<AlarmKey, AlarmRecord> within; // what the change has already made of alarms; count 0: nothing
    std::vector<AlarmEvent> events;
    for (const Entry<AlarmRecord> &entry : change.of<AlarmRecord>()) {
        const AlarmRecord *kept = olt.alarm(entry.key);
        AlarmRecord &before = within.try_emplace(entry.key, kept ? *kept : AlarmRecord{0}).first->second;
        const bool was_active = before.count > 0 && before.active();
        const bool is_active = entry.record && entry.record->active();
        if (was_active != is_active) events.push_back(event_of(olt, entry, before));
        before = entry.record.value_or(AlarmRecord{0});
    }
    uint64_t first_new = number + 1;
    for (const AlarmEvent &event : events)
        change.put<AlarmEvent>(++number, event);
    // The numbers of events that were loaded can have gaps, so the oldest are found by their order.
    auto oldest = history.begin();
    for (size_t count = history.size() + events.size(); count > alarm_history; --count)
        change.drop<AlarmEvent>(oldest != history.end() ? (oldest++)->first : first_new++);
}

} // namespace ponsim
