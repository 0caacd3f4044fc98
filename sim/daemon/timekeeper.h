// The timekeeper lets things happen at a time of day when nobody asks for anything. One thread does that for all OLTs
// of a process. It sleeps until the earliest of their times.
#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace ponsim
{

class Timekeeper
{
public:
    using Time = std::chrono::steady_clock::time_point;

    // A Sleeper is woken at the time for which it is set.
    class Sleeper
    {
    public:
        // Does what is due. The timekeeper's thread calls it. It must not throw, and it sets the next time itself.
        virtual void wake() = 0;

    protected:
        ~Sleeper() = default;
    };

    Timekeeper();
    ~Timekeeper();
    Timekeeper(const Timekeeper &) = delete;

    // Has the sleeper woken once at this time, in place of the time that was set before. Without a time it sleeps on.
    void set(Sleeper &sleeper, std::optional<Time> time);
    // When this returns, the sleeper is not woken any more, unless it is set again. It must not hold a lock that wake()
    // takes.
    void forget(Sleeper &sleeper);

private:
    void keep_time();
    // Returns the sleeper that is woken next, or the end when there is none.
    std::map<Sleeper *, Time>::iterator earliest();

    std::mutex mutex; // guards the members below
    std::condition_variable changed;
    std::map<Sleeper *, Time> times;
    Sleeper *awake = nullptr;
    bool stopping = false;
    std::thread thread;
};

} // namespace ponsim
