#include "daemon/olt.h"

#include <algorithm>
#include <chrono>
#include <functional>

#include "call/exchange.h"
#include "collector/clock.h"
#include "collector/read_table.h"
#include "program_log/log.h"

namespace front
{

using program_log::log_line;
using program_log::LogLevel;

Now time_now()
{
    return {.steady = steady_time_now(), .unix_time = unix_time_now()};
}

namespace
{

// Calls of clients that are under way at once, and that wait.
constexpr size_t call_threads = 2, most_calls = 32;

std::shared_ptr<const OltState> first_state(const std::string &name, const Limits &limits)
{
    auto state = std::make_shared<OltState>();
    state->name = name;
    state->limits = limits;
    return state;
}

} // namespace

Olt::Olt(const OltSettings &settings, const Configuration &configuration, History &kept, Looked told)
    : olt(settings),
      collector(configuration.periods, std::hash<std::string>()(settings.name), time_now),
      history(kept),
      looked(std::move(told)),
      watcher(settings.name, configuration.limits, kept.known(settings.name)),
      turn(time_now().steady),
      workers(std::make_shared<Workers>(call_threads, most_calls, [to = settings.reach] { reach(to); })),
      state(first_state(settings.name, configuration.limits)),
      thread(&Olt::run, this)
{
}

Olt::~Olt()
{
    {
        const std::lock_guard lock(guard);
        stopping = true;
    }
    stopped.notify_all();
    thread.join();
}

void Olt::run()
{
    // Requests pass through call/, which lets a thread send what it has permission for.
    call::UpTo reading(catalogue::Class::read);
    const call::Sender collecting{"reading tables", nullptr};
    const call::Watch watch(collecting, reading);
    reach(olt.reach);
    std::unique_lock lock(guard);
    while (!stopping) {
        lock.unlock();
        const Steady due = collector.read_due([this] { look(); });
        look();
        turn = time_now().steady;
        lock.lock();
        const std::chrono::milliseconds pause(std::clamp<Steady>(due - turn, 0, 60'000));
        stopped.wait_for(lock, pause, [this] { return stopping; });
    }
}

// Says once that a table cannot be read. That the OLT does not answer at all is an event.
void Olt::tell_failures(const Snapshot &snapshot)
{
    for (const TableKind &kind : table_kinds()) {
        const std::string &error = snapshot.state(kind.table).error;
        std::string &said = failures[static_cast<size_t>(kind.table)];
        if (error == said || error == NoAnswer().what()) continue;
        const std::string table = olt.name + ": the table " + kind.name;
        if (error.empty())
            log_line(LogLevel::info, table + " can be read again");
        else
            log_line(LogLevel::warning, table + " cannot be read: " + error);
        said = error;
    }
}

void Olt::look()
{
    const std::shared_ptr<const Snapshot> snapshot = collector.snapshot();
    tell_failures(*snapshot);
    Watcher::Found found = watcher.look(*snapshot, time_now().unix_time);
    try {
        history.keep(olt.name, watcher.what_is_known(), found);
        keep_light(*snapshot);
        history_fails = false;
    } catch (const storage::Error &error) {
        if (!history_fails) log_line(LogLevel::error, "the history cannot be kept: " + std::string(error.what()));
        history_fails = true;
    }
    for (const Event &event : found.events)
        log_line(LogLevel::info, sentence_of(event));
    publish(snapshot, found);
}

void Olt::keep_light(const Snapshot &snapshot)
{
    const TableState &table = snapshot.state(Table::optics);
    if (table.generation == light_generation) return;
    light_generation = table.generation;
    history.keep_light(olt.name, table.read, rows_of(snapshot.optics));
}

// What a table shows now is told before the events that follow from it.
void Olt::publish(std::shared_ptr<const Snapshot> snapshot, const Watcher::Found &found)
{
    const std::shared_ptr<const OltState> before = door().state;
    const bool other_facts = !found.changes.empty() || before->facts_version == 0;
    const auto made = state_behind(*before, std::move(snapshot), watcher.what_is_known().facts, other_facts);
    {
        const std::lock_guard lock(guard);
        state = made;
    }
    looked(*this, *before, *made, found.events);
}

OltDoor Olt::door() const
{
    const std::lock_guard lock(guard);
    return {state, workers, olt.reach};
}

} // namespace front
