// Turns is a lock that is given in the order in which it is asked for, to one thread alone or to several that share it.
// With a mutex of the system, a thread that takes it again and again leaves no turn to the others.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace ponsim
{

// std::unique_lock and std::shared_lock take it.
class Turns
{
public:
    void lock()
    {
        std::unique_lock guard(mutex);
        wait_for_turn(guard, [this] { return sharing == 0; });
    }
    void unlock()
    {
        const std::lock_guard guard(mutex);
        pass_turn();
    }

    // Returns whether somebody waits for a turn.
    bool wanted()
    {
        const std::lock_guard guard(mutex);
        return waiting > 0;
    }

    void lock_shared()
    {
        std::unique_lock guard(mutex);
        wait_for_turn(guard, [] { return true; });
        ++sharing;
        pass_turn();
    }
    void unlock_shared()
    {
        const std::lock_guard guard(mutex);
        if (--sharing == 0 && waiting > 0) changed.notify_all();
    }

private:
    template <class Ready>
    void wait_for_turn(std::unique_lock<std::mutex> &guard, Ready ready)
    {
        const uint64_t own = last++;
        ++waiting;
        changed.wait(guard, [&] { return own == next && ready(); });
        --waiting;
    }
    void pass_turn()
    {
        ++next;
        if (waiting > 0) changed.notify_all();
    }

    std::mutex mutex; // guards the members below
    std::condition_variable changed;
    uint64_t last = 0; // the number that the next thread draws
    uint64_t next = 0; // the number whose turn it is, or will be when those that share are done
    uint32_t waiting = 0;
    uint32_t sharing = 0;
};

} // namespace ponsim
