// These tests take a command to many OLTs without any OLT: which is next, and when it stops.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fleet/rollout/rollout.h"
#include "olts.h"
#include "usage_error.h"

namespace
{

using namespace fleet;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

RolloutOptions in_waves(std::string_view waves)
{
    RolloutOptions options;
    options.waves = read_waves(waves);
    return options;
}

std::vector<size_t> sizes_of(const Plan &plan)
{
    std::vector<size_t> sizes;
    for (const auto &wave : plan.waves)
        sizes.push_back(wave.size());
    return sizes;
}

TEST(Plan, HasWavesOfNumbersAndPercentages)
{
    EXPECT_THAT(sizes_of(plan_for(olts(1000), in_waves("1,5%,25%,rest"))), ElementsAre(1, 50, 250, 699));
    EXPECT_THAT(sizes_of(plan_for(olts(30), in_waves("1,5%,rest"))), ElementsAre(1, 2, 27)) << "5% of 30 are 1.5";
    EXPECT_THAT(sizes_of(plan_for(olts(3), in_waves("2,2,2,rest"))), ElementsAre(2, 1)) << "no wave is empty";
    EXPECT_THAT(sizes_of(plan_for(olts(3), {})), ElementsAre(3));
    EXPECT_THAT(sizes_of(plan_for(olts(3), in_waves("rest"))), ElementsAre(3));
}

TEST(Plan, KeepsTheOrderAndTheLimit)
{
    RolloutOptions options = in_waves("1,rest");
    options.limit = 3;
    EXPECT_THAT(plan_for(olts(9), options).waves, ElementsAre(ElementsAre("olt-1"), ElementsAre("olt-2", "olt-3")));
}

TEST(Plan, LetsNoOltFailInWaves)
{
    EXPECT_EQ(plan_for(olts(9), {}).most_failures, std::nullopt);
    EXPECT_EQ(plan_for(olts(9), in_waves("1,rest")).most_failures, 0);
    RolloutOptions options;
    options.max_failures = read_max_failures("5%");
    EXPECT_EQ(plan_for(olts(1000), options).most_failures, 50);
    EXPECT_EQ(plan_for(olts(19), options).most_failures, 0);
}

TEST(Plan, SaysWhatIsWrong)
{
    EXPECT_THAT(usage_error_of([] { read_concurrency("0"); }),
                StartsWith("--concurrency: expected a number from 1 to"));
    EXPECT_THAT(usage_error_of([] { read_limit("ten"); }), StartsWith("--limit: expected a number"));
    EXPECT_THAT(usage_error_of([] { read_waves("1,5%"); }), AllOf(StartsWith("--waves:"), HasSubstr("'rest'")));
    EXPECT_THAT(usage_error_of([] { read_waves("1,,rest"); }), HasSubstr("and not ''"));
    EXPECT_THAT(usage_error_of([] { read_waves("101%,rest"); }), HasSubstr("and not '101%'"));
    EXPECT_THAT(usage_error_of([] { read_waves("0,rest"); }), HasSubstr("and not '0'"));
    EXPECT_THAT(usage_error_of([] { read_waves("rest,rest"); }), HasSubstr("and not 'rest'"));
    EXPECT_THAT(usage_error_of([] { read_max_failures("few"); }), StartsWith("--max-failures: expected"));
    EXPECT_THAT(usage_error_of([] { read_max_failures("%"); }), HasSubstr("and not '%'"));
    EXPECT_THAT(usage_error_of([] { plan_for({}, {}); }), "there are no OLTs to go to");
    RolloutOptions options;
    options.check = "true";
    EXPECT_THAT(usage_error_of([&] { plan_for(olts(3), options); }), StartsWith("--check:"));
}

TEST(Rollout, RunsNoMoreAtOnceThanItMay)
{
    Plan plan = plan_for(olts(5), {});
    plan.concurrency = 2;
    Rollout rollout(plan);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-1", "olt-2"));
    EXPECT_THAT(rollout.next(), IsEmpty());
    rollout.ended("olt-2", State::done);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-3"));
    EXPECT_EQ(rollout.running(), 2u);
    EXPECT_EQ(rollout.waiting(), 2u);
    EXPECT_THROW(rollout.ended("olt-2", State::done), std::logic_error);
}

TEST(Rollout, IsOverWhenAllHaveEnded)
{
    Rollout rollout(plan_for(olts(2), {}));
    rollout.next();
    rollout.ended("olt-1", State::failed);
    EXPECT_FALSE(rollout.is_over());
    rollout.ended("olt-2", State::done);
    EXPECT_TRUE(rollout.is_over());
    EXPECT_EQ(rollout.stopped(), "");
    EXPECT_EQ(rollout.count(State::failed), 1u);
}

TEST(Rollout, BeginsAWaveWhenTheOneBeforeItIsOver)
{
    Rollout rollout(plan_for(olts(4), in_waves("2,rest")));
    EXPECT_THAT(rollout.next(), SizeIs(2));
    rollout.ended("olt-1", State::done);
    EXPECT_THAT(rollout.next(), IsEmpty());
    rollout.ended("olt-2", State::done);
    EXPECT_EQ(rollout.wave(), 1u);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-3", "olt-4"));
}

TEST(Rollout, StopsAtTheFirstFailureBeyondTheBound)
{
    RolloutOptions options = in_waves("3,rest");
    options.max_failures = Share{1};
    Rollout rollout(plan_for(olts(9), options));
    rollout.next();
    rollout.ended("olt-1", State::unreachable);
    EXPECT_EQ(rollout.stopped(), "");
    rollout.ended("olt-3", State::unknown);
    EXPECT_EQ(rollout.stopped(), "2 OLTs failed, and --max-failures permits 1");
    EXPECT_FALSE(rollout.is_over()) << "olt-2 still runs";
    EXPECT_THAT(rollout.next(), IsEmpty());
    rollout.ended("olt-2", State::done);
    EXPECT_TRUE(rollout.is_over());
    EXPECT_EQ(rollout.waiting(), 6u);
}

TEST(Rollout, WaitsForTheCheckOfAWave)
{
    RolloutOptions options = in_waves("1,1,rest");
    options.check = "true";
    Rollout rollout(plan_for(olts(3), options));
    EXPECT_THROW(rollout.checked(true), std::logic_error);
    rollout.next();
    rollout.ended("olt-1", State::done);
    EXPECT_EQ(rollout.check_due(), 0u);
    EXPECT_THAT(rollout.next(), IsEmpty());
    EXPECT_FALSE(rollout.is_over());
    rollout.checked(true);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-2"));
    rollout.ended("olt-2", State::done);
    EXPECT_EQ(rollout.check_due(), 1u);
    rollout.checked(false);
    EXPECT_EQ(rollout.stopped(), "the check after wave 2 failed");
    EXPECT_EQ(rollout.check_due(), std::nullopt);
    EXPECT_TRUE(rollout.is_over());
}

TEST(Rollout, ChecksNothingBehindTheLastWave)
{
    RolloutOptions options = in_waves("1,rest");
    options.check = "true";
    Rollout rollout(plan_for(olts(2), options));
    rollout.next();
    rollout.ended("olt-1", State::done);
    rollout.checked(true);
    rollout.next();
    rollout.ended("olt-2", State::done);
    EXPECT_EQ(rollout.check_due(), std::nullopt);
    EXPECT_TRUE(rollout.is_over());
}

TEST(Rollout, ThatIsResumedGoesWhereItHasNotCome)
{
    RolloutOptions options = in_waves("3,rest");
    options.check = "true";
    Progress progress;
    progress.ended = {{"olt-1", {State::done}}, {"olt-2", {State::failed, 1}}, {"olt-3", {State::unreachable}}};
    Rollout rollout(plan_for(olts(4), options), progress);
    EXPECT_EQ(rollout.count(State::failed), 1u);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-3"));
    rollout.ended("olt-3", State::done);
    EXPECT_EQ(rollout.stopped(), "") << "the failure of before does not count";
    EXPECT_EQ(rollout.check_due(), 0u);

    progress.ended["olt-3"] = {State::done};
    progress.checked = 1;
    Rollout later(plan_for(olts(4), options), progress);
    EXPECT_THAT(later.next(), ElementsAre("olt-4"));
}

TEST(Rollout, ThatIsResumedKnowsWhatEndsAsBefore)
{
    RolloutOptions options;
    options.concurrency = 1;
    options.max_failures = Share{};
    Progress progress;
    progress.ended = {{"olt-1", {State::unknown}}, {"olt-2", {State::unknown}}};
    Rollout rollout(plan_for(olts(4), options), progress);
    rollout.next();
    rollout.ended("olt-1", State::unknown);
    EXPECT_EQ(rollout.stopped(), "");
    rollout.next();
    rollout.ended("olt-2", State::failed);
    EXPECT_NE(rollout.stopped(), "") << "this is no failure of before";
}

TEST(Rollout, StopsWhenItIsTold)
{
    Rollout rollout(plan_for(olts(3), {}));
    rollout.stop("interrupted");
    rollout.stop("again");
    EXPECT_EQ(rollout.stopped(), "interrupted");
    EXPECT_TRUE(rollout.is_over());
    EXPECT_THAT(rollout.next(), IsEmpty());
}

} // namespace
