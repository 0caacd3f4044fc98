// These tests check how model time passes, in which order things happen, and that the time is kept.
#include "engine/processes.h"

#include <limits>

#include "model/base/random.h"
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

TEST(ModelTime, AClockTellsWhenItShowsATime)
{
    using std::chrono::milliseconds;
    const Clock clock(1000, 10);
    EXPECT_EQ(clock.when(1500).value() - clock.when(1000).value(), milliseconds(50));
    EXPECT_LE(clock.when(1000).value(), std::chrono::steady_clock::now());
    EXPECT_LE(clock.when(999).value(), std::chrono::steady_clock::now()) << "it is past";
    EXPECT_FALSE(clock.when(std::numeric_limits<ModelTime>::max()));
}

TEST(ModelTime, AStoppedClockNeverShowsATimeByItself)
{
    const Clock clock(7, 0);
    EXPECT_FALSE(clock.when(8));
    EXPECT_FALSE(clock.when(7)) << "what is due waits for a request or a step";
}

// Returns a scenario with these events.
std::shared_ptr<const OltScenario> scenario_with(const std::string &events)
{
    const std::string text = "[service.s]\n[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\n"
                             "name = \"home\"\ncount = 4\nservice = \"s\"\n" +
                             events;
    return std::make_shared<const OltScenario>(read_scenario(text, "test").olts.front());
}

TEST(ModelTime, AnEventIsDueAtItsTime)
{
    ServiceFixture fixture({}, {}, false, scenario_with("[[event]]\nat = 60\ndo = \"age 1 10\"\n"));
    Simulator &simulator = fixture.simulator;
    EXPECT_EQ(simulator.next_due(), 60000u);
    simulator.advance(59999);
    EXPECT_EQ(simulator.next_due(), 60000u);
    simulator.advance(60000);
    EXPECT_EQ(simulator.olt().events_done(), 1u);
    EXPECT_GT(simulator.next_due().value_or(std::numeric_limits<ModelTime>::max()), 60000u);
}

TEST(ModelTime, AChangeMakesSomethingDue)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    const ModelTime before = fixture.simulator.next_due().value_or(std::numeric_limits<ModelTime>::max());
    control_line(fixture, "cut 1 feeder");
    EXPECT_GT(before, fixture.simulator.olt().now());
    EXPECT_EQ(fixture.simulator.next_due(), fixture.simulator.olt().now()) << "the light is lost at once";
}

// What is due is looked for after each change, and holds until the next.
TEST(ModelTime, WhatIsDueNextStaysTheSameUntilSomethingChanges)
{
    ServiceFixture fixture(lively());
    bind_arrival(fixture, 5);
    const Olt &olt = fixture.simulator.olt();
    const std::string onu = text::mac_text(fixture.port(1).arrivals.at(0).mac);
    const std::string lines[] = {"loop 1 " + onu + " 1 on",
                                 "power 1 " + onu + " off",
                                 "power 1 " + onu + " on",
                                 "bend 1 " + onu + " 5",
                                 "age 1 40000",
                                 "mend 1 " + onu,
                                 "age-onu 1 " + onu + " 100",
                                 "loop 1 " + onu + " 1 off"};
    Random random{1, 1};
    bsp_pon_msg_ext detection{};
    detection.cmd = BSP_CMD_LOOP_STATE_SET;
    detection.ext_arg = 1;
    EXPECT_EQ(fixture.simulator.handle({BSP_MSG_LOOP_DETECT, &detection, sizeof detection}).status, BSP_OK);
    uint32_t happened = 0;
    for (int round = 0; round < 2000; ++round) {
        if (round % 10 == 0) control_line(fixture, lines[random.below(std::size(lines))]);
        const ModelTime to = olt.now() + random.below(120) * ms_per_second;
        constexpr ModelTime ever = std::numeric_limits<ModelTime>::max();
        for (bool more = true; more; happened += more) {
            const std::optional<Happening> first = first_due(processes(), olt, ever);
            ASSERT_EQ(first.has_value(), fixture.simulator.next_due().has_value());
            if (first) {
                ASSERT_EQ(std::max(first->at, olt.now()), std::max(*fixture.simulator.next_due(), olt.now()));
            }
            more = !fixture.simulator.advance(to, 1);
        }
    }
    EXPECT_GT(happened, 50u) << "too little happens";
}

TEST(ModelTime, PassesUpToTheLastOfTheThingsThatMayHappen)
{
    const std::string events = "[[event]]\nat = 10\nevery = 10\ntimes = 5\ndo = \"age 1 1\"\n";
    ServiceFixture fixture({}, {}, false, scenario_with(events));
    Simulator &simulator = fixture.simulator;
    EXPECT_FALSE(simulator.advance(60000, 2));
    EXPECT_EQ(simulator.olt().now(), 20000u);
    EXPECT_FALSE(simulator.advance(60000, 2));
    EXPECT_TRUE(simulator.advance(60000, 1)) << "the last one";
    EXPECT_EQ(simulator.olt().now(), 60000u);
}

TEST(ModelTime, WhatHappensTogetherIsKept)
{
    const Folder folder;
    const std::string events = "[[event]]\nat = 10\nevery = 10\ntimes = 5\ndo = \"age 1 1\"\n";
    {
        ServiceFixture fixture({}, folder.file("olt.db"), false, scenario_with(events));
        EXPECT_FALSE(fixture.simulator.advance(60000, 3));
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(fixture.simulator.olt().events_done(), 3u);
    EXPECT_EQ(fixture.simulator.olt().module(1)->record().added_hours, 3u);
    EXPECT_EQ(fixture.simulator.olt().now(), 30000u);
}

TEST(Step, ShowsTheTimeOnItsWay)
{
    const std::string events = "[[event]]\nat = 10\nevery = 10\ntimes = 50\ndo = \"age 1 1\"\n";
    ServiceFixture fixture({}, {}, false, scenario_with(events));
    Clock clock(0, 0);
    Step step(fixture.simulator, clock, 1000000);
    ModelTime before = 0;
    uint32_t slices = 0;
    for (; step.go_on(); ++slices) {
        EXPECT_GT(clock.now(), before);
        EXPECT_EQ(fixture.simulator.olt().now(), clock.now());
        before = clock.now();
    }
    EXPECT_GE(slices, 3u);
    EXPECT_EQ(clock.now(), 1000000u);
    EXPECT_EQ(fixture.simulator.olt().module(1)->record().added_hours, 50u);
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
