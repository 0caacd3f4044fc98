// These tests check that sleepers are woken, and that a lock gives turns in order.
#include "daemon/timekeeper.h"

#include <atomic>
#include <set>
#include <shared_mutex>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "daemon/turns.h"

namespace ponsim
{
namespace
{

using std::chrono::steady_clock;

constexpr std::chrono::seconds bound{20};

// This sleeper counts how often it is woken.
class Counter : public Timekeeper::Sleeper
{
public:
    void wake() override
    {
        const std::lock_guard lock(mutex);
        ++count;
        threads.insert(std::this_thread::get_id());
        changed.notify_all();
    }
    // Returns whether it is woken so often within the bound.
    bool is_woken(int times)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, bound, [&] { return count >= times; });
    }

    std::mutex mutex;
    std::condition_variable changed;
    int count = 0;
    std::set<std::thread::id> threads;
};

TEST(Timekeeper, WakesWhatIsDueOnce)
{
    Counter due, other;
    Timekeeper timekeeper;
    timekeeper.set(due, steady_clock::now());
    EXPECT_TRUE(due.is_woken(1));
    timekeeper.set(other, steady_clock::now());
    EXPECT_TRUE(other.is_woken(1));
    timekeeper.forget(due);
    EXPECT_EQ(due.count, 1);
}

TEST(Timekeeper, HasOneThreadForAll)
{
    Counter first, second;
    Timekeeper timekeeper;
    timekeeper.set(first, steady_clock::now());
    timekeeper.set(second, steady_clock::now());
    EXPECT_TRUE(first.is_woken(1));
    EXPECT_TRUE(second.is_woken(1));
    timekeeper.forget(first);
    timekeeper.forget(second);
    EXPECT_EQ(first.threads, second.threads);
    EXPECT_FALSE(first.threads.contains(std::this_thread::get_id()));
}

TEST(Timekeeper, AnEarlierTimeTakesThePlaceOfALaterOne)
{
    Counter counter;
    Timekeeper timekeeper;
    timekeeper.set(counter, steady_clock::now() + std::chrono::hours(1));
    timekeeper.set(counter, steady_clock::now());
    EXPECT_TRUE(counter.is_woken(1));
}

TEST(Timekeeper, DoesNotWakeWhatSleepsOnOrIsForgotten)
{
    Counter sleeps_on, forgotten, last;
    Timekeeper timekeeper;
    timekeeper.set(sleeps_on, steady_clock::now() + std::chrono::hours(1));
    timekeeper.set(sleeps_on, std::nullopt);
    timekeeper.set(forgotten, steady_clock::now() + std::chrono::hours(1));
    timekeeper.forget(forgotten);
    timekeeper.set(last, steady_clock::now());
    EXPECT_TRUE(last.is_woken(1));
    EXPECT_EQ(sleeps_on.count, 0);
    EXPECT_EQ(forgotten.count, 0);
}

TEST(Turns, OneThreadAloneOrSeveralThatShare)
{
    constexpr int threads_of_a_kind = 3, rounds = 500;
    Turns turns;
    int written = 0;
    std::atomic<int> torn = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < threads_of_a_kind; ++number) {
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const std::lock_guard lock(turns);
                ++written;
                ++written;
            }
        });
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const std::shared_lock lock(turns);
                torn += written % 2;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(written, 2 * threads_of_a_kind * rounds);
}

TEST(Turns, SeveralShareAtTheSameTime)
{
    Turns turns;
    std::atomic<int> inside = 0;
    const auto meet = [&] {
        const std::shared_lock lock(turns);
        ++inside;
        const auto end = steady_clock::now() + bound;
        while (inside < 2 && steady_clock::now() < end)
            std::this_thread::yield();
    };
    std::thread other(meet);
    meet();
    other.join();
    EXPECT_EQ(inside, 2);
}

TEST(Turns, WhoTakesTheLockAgainAndAgainLeavesTurnsToOthers)
{
    Turns turns;
    std::atomic<bool> had_a_turn = false;
    std::thread other;
    uint64_t taken = 0;
    const auto end = steady_clock::now() + bound;
    for (; !had_a_turn && steady_clock::now() < end; ++taken) {
        const std::lock_guard lock(turns);
        if (taken == 0)
            other = std::thread([&] {
                const std::lock_guard own(turns);
                had_a_turn = true;
            });
    }
    other.join();
    EXPECT_TRUE(had_a_turn);
}

} // namespace
} // namespace ponsim
