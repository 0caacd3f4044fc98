#include "daemon/olt.h"

#include <algorithm>
#include <chrono>
#include <functional>

#include "board/service.h"
#include "daemon/log.h"

namespace front
{

Now time_now()
{
    using namespace std::chrono;
    return {.steady = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count(),
            .unix_time = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count()};
}

Olt::Olt(const OltSettings &settings, const Configuration &configuration, History &kept)
    : olt(settings),
      collector(configuration.periods, std::hash<std::string>()(settings.name), time_now),
      history(kept),
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

void Olt::look()
{
    Watcher::Found found = watcher.look(*collector.snapshot(), time_now().unix_time);
    try {
        history.keep(olt.name, watcher.what_is_known(), found);
        history_fails = false;
    } catch (const storage::Error &error) {
        if (!history_fails) log_line(LogLevel::error, "the history cannot be kept: " + std::string(error.what()));
        history_fails = true;
    }
    for (const Event &event : found.events)
        log_line(LogLevel::info, sentence_of(event));
}

} // namespace front
