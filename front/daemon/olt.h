// An OLT that is collected by a thread of its own.
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "collector/collector.h"
#include "daemon/configuration.h"
#include "history/history.h"
#include "watch/watcher.h"

namespace front
{

// Returns the time of now.
Now time_now();

class Olt
{
public:
    // Is called by the thread of the OLT whenever it has looked at what it read, with what happened.
    using Looked = std::function<void(const OltSettings &, const std::vector<Event> &)>;

    // Starts to collect. What happens goes to the history, which outlives the OLT, and to the log.
    Olt(const OltSettings &olt, const Configuration &configuration, History &history, Looked looked);
    ~Olt(); // ends the thread, after the exchange that is under way
    Olt(const Olt &) = delete;
    Olt &operator=(const Olt &) = delete;

    const OltSettings &settings() const { return olt; }
    std::shared_ptr<const Snapshot> snapshot() const { return collector.snapshot(); }
    // Returns what was found in the snapshot that was looked at last; null before that. It is another object whenever
    // something is different.
    std::shared_ptr<const Facts> facts() const;
    // Returns when the thread was last seen to go on.
    Steady last_turn() const { return turn; }

private:
    void run();
    void look();
    void publish_facts(bool are_different);
    void tell_failures(const Snapshot &snapshot);

    const OltSettings olt;
    Collector collector;
    History &history;
    const Looked looked;
    Watcher watcher;
    bool history_fails = false;                      // which is said once
    std::array<std::string, table_count> failures{}; // of tables, as they were said last
    std::atomic<Steady> turn;

    mutable std::mutex guard;
    std::shared_ptr<const Facts> latest_facts;
    std::condition_variable stopped;
    bool stopping = false;
    std::thread thread;
};

} // namespace front
