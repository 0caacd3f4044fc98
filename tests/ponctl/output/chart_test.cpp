// These tests check charts of a quantity over time.
#include "results/chart.h"

#include "results/history.h"

#include <gtest/gtest.h>

namespace
{

using namespace ponctl;
using Lines = std::vector<std::string>;

constexpr ChartStyle small{.width = 16, .height = 3, .decimals = 1, .blocks = false};

TEST(Chart, DrawsTheNewestValuesAtTheRightBetweenTheLeastAndTheGreatest)
{
    EXPECT_EQ(chart({9, 1, 2, 3, 2}, small), (Lines{"       3.0 |  # ", "       2.0 | ###", "       1.0 |.###"}));
}

TEST(Chart, DrawsAConstantAsALineInTheMiddle)
{
    EXPECT_EQ(chart({5, 5}, small), (Lines{"       5.1 |  ", "       5.0 |##", "       4.9 |##"}));
}

TEST(Chart, DrawsZerosAtTheBottomOfAnAxisThatBeginsWithZero)
{
    EXPECT_EQ(chart({0, 0}, small), (Lines{"       0.2 |  ", "       0.1 |  ", "       0.0 |.."}));
    EXPECT_EQ(chart({0, 0.1}, small), (Lines{"       0.2 |  ", "       0.1 | #", "       0.0 |.#"}));
}

TEST(Chart, ReachesFromTheAxisToTheWidthInBlocks)
{
    const Lines lines = chart({0, 7}, {.width = 14, .height = 1, .decimals = 0, .blocks = true});
    EXPECT_EQ(lines, Lines{"         0 |▁█"});
}

TEST(Chart, DrawsNegativeValues)
{
    EXPECT_EQ(chart({-24, -22}, {.width = 14, .height = 2, .decimals = 0, .blocks = false}),
              (Lines{"       -22 | #", "       -24 |.#"}));
}

TEST(Chart, HasAColumnHoweverNarrowItIs)
{
    EXPECT_EQ(chart_columns({.width = 3}), 1u);
    EXPECT_EQ(chart({1, 2}, {.width = 3, .height = 2}).size(), 2u);
}

TEST(Rate, IsTheGrowthASecondUnlessTheNumberFell)
{
    const Rate::Clock::time_point start;
    Rate rate;
    EXPECT_EQ(rate.next(100, start), std::nullopt);
    EXPECT_EQ(rate.next(150, start + std::chrono::seconds(2)), 25);
    EXPECT_EQ(rate.next(20, start + std::chrono::seconds(3)), std::nullopt);
    EXPECT_EQ(rate.next(21, start + std::chrono::seconds(4)), 1);
}

} // namespace
