// These tests check when a table is read.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "collector/schedule.h"

namespace
{

using front::Schedule;
using front::Steady;
using testing::AllOf;
using testing::Ge;
using testing::Le;

TEST(Schedule, BeginsAtOnce)
{
    EXPECT_LE(Schedule(10'000, 1).due(), 0);
}

TEST(Schedule, HasItsPeriodUpToATenthLess)
{
    Schedule schedule(10'000, 7);
    Steady now = 0;
    for (int i = 0; i < 1000; ++i) {
        schedule.was_read(now);
        EXPECT_THAT(schedule.due() - now, AllOf(Ge(9'000), Le(10'000)));
        now = schedule.due();
    }
    EXPECT_LT(now, 9'700'000) << "periods vary";
}

TEST(Schedule, IsAnotherForAnotherSeed)
{
    Schedule one(600'000, 1), other(600'000, 2);
    one.was_read(0);
    other.was_read(0);
    EXPECT_NE(one.due(), other.due());
}

TEST(Schedule, BacksOffAfterFailuresUpToAMinute)
{
    Schedule schedule(5'000, 3);
    Steady expected = 1'000;
    for (int i = 0; i < 10; ++i) {
        schedule.failed(0);
        EXPECT_THAT(schedule.due(), AllOf(Ge(expected * 9 / 10), Le(expected)));
        expected = std::min<Steady>(2 * expected, 60'000);
    }
    schedule.was_read(0);
    schedule.failed(0);
    EXPECT_LE(schedule.due(), 1'000) << "after a success it begins anew";
}

} // namespace
