#include "collector/collector.h"

#include <algorithm>
#include <utility>

#include "collector/read_table.h"

namespace front
{

Collector::Collector(const Periods &periods, uint64_t seed, std::function<Now()> time) : clock(std::move(time))
{
    const auto made = std::make_shared<Snapshot>();
    for (size_t table = 0; table < table_count; ++table) {
        schedules.emplace_back(Steady{1000} * periods[table], ++seed);
        made->states[table].period = periods[table];
    }
    latest = made;
}

Steady Collector::read_due(const std::function<void()> &look)
{
    const Steady now = clock().steady;
    const Schedule *asked_again = nullptr; // when the OLT does not answer
    bool has_read = false;
    for (const TableKind &kind : table_kinds()) {
        Schedule &schedule = schedule_of(kind.table);
        if (schedule.due() > now) continue;
        if (asked_again) {
            note_failure(kind.table, NoAnswer().what());
            schedule.wait_until(asked_again->due());
            continue;
        }
        if (std::exchange(has_read, true) && look) look();
        if (!read(kind.table)) asked_again = &schedule;
    }
    return std::ranges::min(schedules, {}, &Schedule::due).due();
}

std::shared_ptr<const Snapshot> Collector::snapshot() const
{
    const std::lock_guard lock(guard);
    return latest;
}

bool Collector::read(Table table)
{
    const auto made = std::make_shared<Snapshot>(*latest);
    TableState &state = made->states[static_cast<size_t>(table)];
    const Now before = clock();
    try {
        read_table(table, *made);
    } catch (const Fault &fault) {
        note_failure(table, fault.what());
        schedule_of(table).failed(clock().steady);
        return dynamic_cast<const NoAnswer *>(&fault) == nullptr;
    }
    const Now after = clock();
    ++state.generation;
    state.read = after.unix_time;
    state.took = static_cast<uint32_t>(after.steady - before.steady);
    state.failed = 0;
    state.error.clear();
    schedule_of(table).was_read(after.steady);
    publish(made);
    return true;
}

void Collector::note_failure(Table table, const char *reason)
{
    const auto made = std::make_shared<Snapshot>(*latest);
    TableState &state = made->states[static_cast<size_t>(table)];
    ++state.failures;
    ++state.failed;
    state.error = reason;
    publish(made);
}

void Collector::publish(std::shared_ptr<const Snapshot> made)
{
    const std::lock_guard lock(guard);
    latest.swap(made);
}

} // namespace front
