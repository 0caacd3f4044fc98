// These tests check how model time passes, in which order things happen, and that the time is kept.
#include "engine/processes.h"

#include "optics.h"

namespace ponsim
{
namespace
{

// These processes do nothing at fixed times.
template <ModelTime at>
constexpr Process due_at{[](const Olt &) { return std::optional<ModelTime>(at); },
                         [](const Olt &) { return Change{}; }};
constexpr Process never{[](const Olt &) { return std::optional<ModelTime>(); }, [](const Olt &) { return Change{}; }};

std::string say(Simulator &simulator, Clock &clock, const std::string &line)
{
    try {
        return control(simulator, clock, line);
    } catch (const ControlError &error) {
        return std::string("error: ") + error.what();
    }
}

TEST(ModelTime, TheEarliestHappensFirst)
{
    const Olt olt{Settings{}};
    const Process both[] = {never, due_at<20>, due_at<10>};
    const auto first = first_due(both, olt, 30);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->process, &both[2]);
    EXPECT_EQ(first->at, 10u);
}

TEST(ModelTime, WhatIsDueAtTheSameTimeHappensInTheOrderOfTheTable)
{
    const Olt olt{Settings{}};
    const Process both[] = {never, due_at<10>, due_at<10>};
    const auto first = first_due(both, olt, 30);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->process, &both[1]);
}

TEST(ModelTime, WhatIsDueLaterDoesNotHappenYet)
{
    const Olt olt{Settings{}};
    const Process both[] = {due_at<20>, never};
    EXPECT_FALSE(first_due(both, olt, 19));
    EXPECT_TRUE(first_due(both, olt, 20));
}

TEST(ModelTime, TwoThingsThatHappenToAModuleAtTheSameTimeBothHappen)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    EXPECT_EQ(trigger(fixture, 1, 5), BSP_OK);
    control_line(fixture, "age 1 130000");
    pass(fixture, 0);
    const ModuleRecord &record = fixture.simulator.olt().module(1)->record();
    EXPECT_TRUE(record.result);
    EXPECT_FALSE(record.measurement);
    EXPECT_NE(record.raised, 0u);
}

TEST(ModelTime, DoesNotGoBack)
{
    ServiceFixture fixture;
    fixture.simulator.advance(1000);
    fixture.simulator.advance(500);
    EXPECT_EQ(fixture.simulator.olt().now(), 1000u);
}

TEST(ModelTime, IsKeptOverARestart)
{
    const Folder folder;
    {
        ServiceFixture fixture({}, folder.file("olt.db"));
        fixture.simulator.advance(123456789);
        fixture.simulator.keep_time();
    }
    EXPECT_EQ(ServiceFixture({}, folder.file("olt.db")).simulator.olt().now(), 123456789u);
}

TEST(ModelTime, AChangeKeepsTheTimeAtWhichItWasMade)
{
    const Folder folder;
    {
        ServiceFixture fixture({}, folder.file("olt.db"));
        fixture.simulator.advance(5000);
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
        fixture.simulator.advance(9000);
    }
    EXPECT_EQ(ServiceFixture({}, folder.file("olt.db")).simulator.olt().now(), 5000u);
}

TEST(ModelTime, AStoppedClockMovesByStepsAlone)
{
    Clock clock(7, 0);
    EXPECT_EQ(clock.now(), 7u);
    clock.step(93);
    EXPECT_EQ(clock.now(), 100u);
}

TEST(ModelTime, AFastClockIsAheadOfASlowOne)
{
    const Clock fast(0, 1e6), slow(0, 1);
    while (slow.now() == 0) {
    }
    EXPECT_GE(fast.now(), 1000000u);
}

TEST(Control, StepsTimeAndTellsIt)
{
    ServiceFixture fixture;
    Clock clock(0, 0);
    EXPECT_EQ(say(fixture.simulator, clock, "now"), "0 s of model time\n");
    EXPECT_EQ(say(fixture.simulator, clock, "step 90"), "90 s of model time\n");
    EXPECT_EQ(say(fixture.simulator, clock, "  now "), "90 s of model time\n");
    EXPECT_EQ(say(fixture.simulator, clock, "step 0.25"), "90.250 s of model time\n");
    EXPECT_EQ(say(fixture.simulator, clock, "step 2.755"), "93.005 s of model time\n");
}

TEST(Control, HelpNamesEachCommandInALineOfItsOwn)
{
    ServiceFixture fixture;
    Clock clock(0, 0);
    const std::string help = "\n" + say(fixture.simulator, clock, "help");
    EXPECT_EQ(say(fixture.simulator, clock, ""), help.substr(1));
    for (const std::string name : {"help ", "now ", "step SECONDS ", "age CAGE HOURS ", "power PORT ONU on|off ",
                                   "loop PORT ONU UNI on|off ", "bend PORT BRANCH DB "})
        EXPECT_NE(help.find("\n" + name), std::string::npos) << name;
}

TEST(Control, WrongCommandsChangeNothingAndAreExplainedInALine)
{
    ServiceFixture fixture;
    Clock clock(0, 0);
    for (const auto &[line, part] : {std::pair{"jump 5", "jump: not a command; ponsim ctl help"},
                                     {"step", "step: expected"},
                                     {"step 1 2", "step: expected"},
                                     {"step -1", "-1: expected a number"},
                                     {"step 1.x", "expected a number"},
                                     {"step 1.", "1.: expected seconds with at most three decimals"},
                                     {"step 0.2500", "0.2500: expected seconds with at most three decimals"},
                                     {"step 99999999999999999999", "expected a number"},
                                     {"step 315360001", "expected a number from 0 to 315360000"},
                                     {"now 1", "now: expected"}}) {
        const std::string said = say(fixture.simulator, clock, line);
        EXPECT_TRUE(said.starts_with("error: ")) << line;
        EXPECT_NE(said.find(part), std::string::npos) << said;
        EXPECT_EQ(said.find('\n'), std::string::npos) << said;
    }
    EXPECT_EQ(clock.now(), 0u);
}

} // namespace
} // namespace ponsim
