#include "closer.h"

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <vector>

#include <pthread.h>

#include "board/util.h"

namespace board
{
namespace
{

using Clock = std::chrono::steady_clock;

// One wake-up of the closing thread is for so many descriptors, or for what has come in so long a time.
constexpr size_t batch = 64;
constexpr std::chrono::milliseconds pause{20};
// A thread that has been closing for so long waits for a peer. Then another one takes its place.
constexpr std::chrono::seconds patience{1};
constexpr int most_threads = 8;

// The closing threads may outlive everything else of the process, so this is never destroyed.
struct Closer {
    std::mutex mutex; // guards the members below
    std::condition_variable more;
    std::vector<Descriptor> pending;
    Clock::time_point closing_since{}; // when the last thread took its batch; the epoch while it waits for one
    int threads = 0;
    pid_t process = getpid(); // in a child process the threads do not exist

    static void *run(void *closer)
    {
        static_cast<Closer *>(closer)->close_all();
        return nullptr;
    }

    // Returns whether a thread takes what is pending soon.
    bool has_thread() const
    {
        return threads > 0 && (closing_since == Clock::time_point{} || Clock::now() - closing_since < patience);
    }

    void close_all()
    {
        std::unique_lock lock(mutex);
        while (more.wait_for(lock, patience, [this] { return !pending.empty(); })) {
            more.wait_for(lock, pause, [this] { return pending.size() >= batch; });
            std::vector<Descriptor> taken = std::exchange(pending, {});
            const Clock::time_point since = closing_since = Clock::now();
            lock.unlock();
            taken.clear();
            lock.lock();
            if (closing_since == since) closing_since = {};
        }
        --threads;
    }

    bool start_thread()
    {
        sigset_t all, before;
        sigfillset(&all);
        pthread_t thread;
        pthread_sigmask(SIG_SETMASK, &all, &before);
        const bool started = !pthread_create(&thread, nullptr, run, this) && !pthread_detach(thread);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return started;
    }

    void add(Descriptor passed)
    {
        const std::lock_guard lock(mutex);
        if (process != getpid()) {
            process = getpid();
            threads = 0;
            closing_since = {};
        }
        pending.push_back(std::move(passed));
        if (has_thread()) {
            if (pending.size() == 1 || pending.size() == batch) more.notify_all();
        } else if (threads < most_threads && start_thread()) {
            ++threads;
            closing_since = {};
        } else if (pending.size() % batch == 0) {
            userlog_err("close_passed", __LINE__, "%zu descriptors of peers stay open: closing others has no end",
                        pending.size());
        }
    }
};

} // namespace

void close_passed(Descriptor passed)
{
    static Closer &closer = *new Closer;
    if (passed) closer.add(std::move(passed));
}

} // namespace board
