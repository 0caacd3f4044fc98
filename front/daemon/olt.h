// An OLT that is collected by a thread of its own.
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "collector/collector.h"
#include "daemon/configuration.h"
#include "history/history.h"
#include "http/workers.h"
#include "watch/watcher.h"
#include "web/event_hub.h"
#include "web/olt_state.h"

namespace front
{

// Returns the time of now.
Now time_now();

class Olt
{
public:
    // Starts to collect. What happens goes to the history and the hub, which outlive the OLT, and to the log.
    Olt(const OltSettings &olt, const Configuration &configuration, History &history, EventHub &event_hub);
    ~Olt(); // ends the thread, after the exchange that is under way
    Olt(const Olt &) = delete;
    Olt &operator=(const Olt &) = delete;

    const OltSettings &settings() const { return olt; }
    std::shared_ptr<const Snapshot> snapshot() const { return collector.snapshot(); }
    OltDoor door() const;
    // Returns when the thread was last seen to go on.
    Steady last_turn() const { return turn; }

private:
    void run();
    void look();
    void tell_failures(const Snapshot &snapshot);
    void keep_light(const Snapshot &snapshot);
    void publish(std::shared_ptr<const Snapshot> snapshot, const Watcher::Found &found);

    const OltSettings olt;
    Collector collector;
    History &history;
    EventHub &hub;
    Watcher watcher;
    uint64_t light_generation = 0;                   // of the table of light that was kept last
    bool history_fails = false;                      // which is said once
    std::array<std::string, table_count> failures{}; // of tables, as they were said last
    std::atomic<Steady> turn;
    const std::shared_ptr<Workers> workers; // that clients have call the OLT

    mutable std::mutex guard;
    std::shared_ptr<const OltState> state;
    std::condition_variable stopped;
    bool stopping = false;
    std::thread thread;
};

} // namespace front
