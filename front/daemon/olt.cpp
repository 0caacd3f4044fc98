#include "daemon/olt.h"

#include <algorithm>
#include <chrono>
#include <functional>

#include "board/service.h"
#include "call/exchange.h"
#include "collector/read_table.h"
#include "daemon/log.h"

namespace front
{

Now time_now()
{
    using namespace std::chrono;
    return {.steady = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count(),
            .unix_time = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count()};
}

Olt::Olt(const OltSettings &settings, const Configuration &configuration, History &kept, Looked told)
    : olt(settings),
      collector(configuration.periods, std::hash<std::string>()(settings.name), time_now),
      history(kept),
      looked(std::move(told)),
      watcher(settings.name, configuration.limits, kept.known(settings.name)),
      turn(time_now().steady),
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
    if (!olt.socket_dir.empty()) board_ipc_use_thread_directory(olt.socket_dir.c_str());
    std::unique_lock lock(guard);
    while (!stopping) {
        lock.unlock();
        const Steady due = collector.read_due();
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

std::shared_ptr<const Facts> Olt::facts() const
{
    const std::lock_guard lock(guard);
    return latest_facts;
}

// Readers have facts of their own, which cost a copy, so they are published only where they are different.
void Olt::publish_facts(bool are_different)
{
    if (!are_different && latest_facts) return;
    auto facts = std::make_shared<const Facts>(watcher.what_is_known().facts);
    const std::lock_guard lock(guard);
    latest_facts.swap(facts);
}

void Olt::look()
{
    const std::shared_ptr<const Snapshot> snapshot = collector.snapshot();
    tell_failures(*snapshot);
    Watcher::Found found = watcher.look(*snapshot, time_now().unix_time);
    try {
        history.keep(olt.name, watcher.what_is_known(), found);
        history_fails = false;
    } catch (const storage::Error &error) {
        if (!history_fails) log_line(LogLevel::error, "the history cannot be kept: " + std::string(error.what()));
        history_fails = true;
    }
    publish_facts(!found.changes.empty());
    for (const Event &event : found.events)
        log_line(LogLevel::info, sentence_of(event));
    looked(olt, found.events);
}

} // namespace front
