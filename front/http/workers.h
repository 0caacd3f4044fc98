// Threads that do what takes time, so that nobody else waits for it.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace front
{

class Workers
{
public:
    using Job = std::function<void()>;

    // Each thread calls `prepare` first. At most so many jobs wait.
    Workers(size_t threads, size_t most_waiting, std::function<void()> prepare = {});
    ~Workers(); // does the jobs that wait
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    // Returns false, and does nothing, when too many jobs wait. A job throws nothing. Any thread may call this.
    bool post(Job job);

private:
    void run(const std::function<void()> &prepare);

    const size_t most;
    std::mutex guard;
    std::condition_variable changed;
    std::deque<Job> jobs;
    bool stopping = false;
    std::vector<std::thread> threads;
};

} // namespace front
