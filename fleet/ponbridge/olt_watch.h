// An OltWatch reads an OLT by a thread of its own, and tells what happens there.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "front/collector/collector.h"
#include "front/watch/watcher.h"

namespace fleet
{

class OltWatch
{
public:
    // Is called by the thread with a line of JSON for each event.
    using Tell = std::function<void(const std::string &olt, const std::string &event)>;

    // Tables from which events follow are read in their usual periods, or in this one where it is shorter.
    OltWatch(const std::string &olt, std::string socket_dir, uint32_t seconds, Tell tell);
    ~OltWatch(); // ends the thread, after the exchange that is under way
    OltWatch(const OltWatch &) = delete;
    OltWatch &operator=(const OltWatch &) = delete;

private:
    void run();
    void look();

    const std::string olt, folder;
    const Tell tell;
    front::Collector collector;
    front::Watcher watcher;
    std::mutex guard;
    std::condition_variable stopped;
    bool stopping = false;
    std::thread thread;
};

// Writes one line, with the members of the events of ponfront.
std::string to_json(const front::Event &event);

} // namespace fleet
