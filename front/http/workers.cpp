#include "http/workers.h"

#include <utility>

namespace front
{

Workers::Workers(size_t count, size_t most_waiting, std::function<void()> prepare) : most(most_waiting)
{
    for (size_t number = 0; number < count; ++number)
        threads.emplace_back([this, prepare] { run(prepare); });
}

Workers::~Workers()
{
    {
        const std::lock_guard lock(guard);
        stopping = true;
    }
    changed.notify_all();
    for (std::thread &thread : threads)
        thread.join();
}

bool Workers::post(Job job)
{
    {
        const std::lock_guard lock(guard);
        if (jobs.size() >= most) return false;
        jobs.push_back(std::move(job));
    }
    changed.notify_one();
    return true;
}

void Workers::run(const std::function<void()> &prepare)
{
    if (prepare) prepare();
    std::unique_lock lock(guard);
    while (true) {
        changed.wait(lock, [this] { return stopping || !jobs.empty(); });
        if (jobs.empty()) return;
        {
            const Job job = std::move(jobs.front());
            jobs.pop_front();
            lock.unlock();
            job();
        }
        lock.lock();
    }
}

} // namespace front
