#include "daemon/timekeeper.h"

#include <algorithm>

#include "daemon/thread.h"

namespace ponsim
{

Timekeeper::Timekeeper() : thread(start_without_signals(&Timekeeper::keep_time, this)) {}

Timekeeper::~Timekeeper()
{
    {
        const std::lock_guard lock(mutex);
        stopping = true;
    }
    changed.notify_all();
    thread.join();
}

std::map<Timekeeper::Sleeper *, Timekeeper::Time>::iterator Timekeeper::earliest()
{
    return std::ranges::min_element(times, {}, [](const auto &each) { return each.second; });
}

void Timekeeper::set(Sleeper &sleeper, std::optional<Time> time)
{
    const std::lock_guard lock(mutex);
    const auto found = times.find(&sleeper);
    if (found == times.end() ? !time : time == found->second) return;
    if (time)
        times[&sleeper] = *time;
    else
        times.erase(found);
    changed.notify_all();
}

void Timekeeper::forget(Sleeper &sleeper)
{
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return awake != &sleeper; });
    times.erase(&sleeper);
}

void Timekeeper::keep_time()
{
    std::unique_lock lock(mutex);
    while (!stopping) {
        const auto next = earliest();
        if (next == times.end()) {
            changed.wait(lock);
        } else if (next->second > std::chrono::steady_clock::now()) {
            const Time time = next->second; // set() may change the entry meanwhile
            changed.wait_until(lock, time);
        } else {
            awake = next->first;
            times.erase(next);
            lock.unlock();
            awake->wake();
            lock.lock();
            awake = nullptr;
            changed.notify_all();
        }
    }
}

} // namespace ponsim
