// These tests check failures and repairs that are drawn by the seed.
#include "scenario/agenda.h"

#include <gmock/gmock.h>

#include "scenes.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;

constexpr ModelTime day = 24 * 3600 * ms_per_second;

std::string plant(const std::string &failures)
{
    return "[service.home]\n[[olt]]\nports = 2\n[[olt.port]]\nnumbers = \"1-2\"\n[[olt.port.branch]]\nname = "
           "\"street\"\n"
           "length = 500\nsplit = 32\n[[olt.port.onu]]\nname = \"a\"\ncount = 4\nservice = \"home\"\n[[olt.port.onu]]\n"
           "name = \"b\"\nservice = \"home\"\n" +
           failures;
}

std::string failure(const std::string &of, const std::string &more = "", const char *mtbf = "10d",
                    const char *mttr = "4h")
{
    return "[[failure]]\nof = \"" + of + "\"\nmtbf = \"" + mtbf + "\"\nmttr = \"" + mttr + "\"\n" + more + '\n';
}

std::shared_ptr<const OltScenario> scenario(const std::string &text, uint64_t seed = 1)
{
    return std::make_shared<const OltScenario>(
        read_scenario(text, "test.toml", {.seed = seed, .variables = {}}).olts.at(0));
}

// Returns the first entries of an agenda.
std::vector<Event> entries(Agenda &agenda, size_t count)
{
    std::vector<Event> all;
    for (size_t number = 0; number < count; ++number)
        if (const Event *event = agenda.entry(number)) all.push_back(*event);
    return all;
}

TEST(Failures, EachPartFailsAndIsRepairedInTurns)
{
    Agenda agenda(scenario(plant(failure("power", "ports = \"1\"\nnames = [\"b\"]"))));
    const std::vector<Event> all = entries(agenda, 200);
    ASSERT_EQ(all.size(), 200u);
    ModelTime up = 0, down = 0, last = 0;
    for (size_t index = 0; index < all.size(); ++index) {
        const bool fails = index % 2 == 0;
        EXPECT_EQ(all[index].words, fails ? "power 1 b off" : "power 1 b on");
        EXPECT_EQ(all[index].kind, fails ? "failure" : "repair");
        EXPECT_GT(all[index].at, last);
        (fails ? up : down) += all[index].at - last;
        last = all[index].at;
    }
    EXPECT_NEAR(static_cast<double>(up) / 100, static_cast<double>(10 * day), 2.5 * static_cast<double>(day));
    EXPECT_NEAR(static_cast<double>(down) / 100 / ms_per_second, 4 * 3600, 3600);
}

TEST(Failures, FollowFromTheSeed)
{
    const std::string text = plant(failure("power") + failure("fibre", "names = [\"street\"]"));
    Agenda one(scenario(text)), again(scenario(text)), other(scenario(text, 2));
    EXPECT_EQ(entries(one, 300), entries(again, 300));
    EXPECT_NE(entries(one, 300), entries(other, 300));
}

TEST(Failures, AnAgendaGoesBackAndOn)
{
    Agenda agenda(scenario(plant(failure("power") + "[[event]]\nat = \"5d\"\ndo = \"age 1 1\"\n")));
    const std::vector<Event> all = entries(agenda, 100);
    EXPECT_TRUE(std::ranges::is_sorted(all, {}, &Event::at));
    EXPECT_EQ(std::ranges::count(all, "event", &Event::kind), 1);
    EXPECT_EQ(*agenda.entry(17), all[17]);
    EXPECT_EQ(*agenda.entry(60), all[60]);
}

TEST(Failures, AnAgendaWithoutFailuresEnds)
{
    Agenda agenda(scenario(plant("[[event]]\nat = 5\ndo = \"age 1 1\"\n")));
    EXPECT_NE(agenda.entry(0), nullptr);
    EXPECT_EQ(agenda.entry(1), nullptr);
    EXPECT_EQ(agenda.entry(7), nullptr);
    EXPECT_NE(agenda.entry(0), nullptr);
    EXPECT_EQ(Agenda({}).entry(0), nullptr);
}

TEST(Failures, ConcernThePartsThatAreNamed)
{
    const auto words = [](const std::string &text) {
        std::set<std::string> all;
        const auto olt = scenario(plant(text));
        for (const FailingPart &part : olt->failing)
            all.insert(part.failure + " / " + part.repair);
        return all;
    };
    EXPECT_EQ(words(failure("power")).size(), 10u);
    EXPECT_THAT(words(failure("rogue", "ports = \"2\"\nnames = [\"a-1\", \"b*\"]")),
                testing::ElementsAre("rogue 2 a-1 on / rogue 2 a-1 off", "rogue 2 b on / rogue 2 b off"));
    EXPECT_EQ(words(failure("fibre", "ports = \"1\"")).size(), 6u);
    EXPECT_THAT(words(failure("fibre", "ports = \"1\"\nnames = [\"street\"]")),
                testing::ElementsAre("cut 1 street / mend 1 street"));
    EXPECT_THAT(words(failure("laser")), testing::ElementsAre("dim 1 60 / dim 1 off", "dim 2 60 / dim 2 off"));
}

TEST(Failures, HappenToTheOltAndAreLogged)
{
    Scene scene(plant(failure("power", "ports = \"1\"\nnames = [\"b\"]")));
    Agenda agenda(scenario(plant(failure("power", "ports = \"1\"\nnames = [\"b\"]"))));
    const Event first = *agenda.entry(0), second = *agenda.entry(1);
    const auto online = [&] { return scene.olt().online(scene.port(1), scene.onu(1, "b").mac); };
    scene.simulator.advance(first.at - 1);
    EXPECT_TRUE(online());
    scene.simulator.advance(first.at);
    EXPECT_FALSE(online());
    scene.simulator.advance(second.at + 300 * ms_per_second);
    EXPECT_TRUE(online());
    EXPECT_THAT(scene.simulator.take_log(),
                testing::IsSupersetOf({"failure at " + text::time_text(first.at) + ": power 1 b off",
                                       "repair at " + text::time_text(second.at) + ": power 1 b on"}));
}

TEST(Failures, EachControlIsCarriedOut)
{
    for (const char *of : {"power", "rogue", "fibre", "laser"}) {
        Scene scene(plant(failure(of, "ports = \"1\"", "1d", "1h")));
        scene.simulator.advance(20 * day);
        size_t lines = 0;
        for (const std::string &line : scene.simulator.take_log()) {
            EXPECT_THAT(line, testing::Not(HasSubstr("refused"))) << of;
            lines += line.starts_with("failure at ");
        }
        EXPECT_GT(lines, 8u) << of;
    }
}

TEST(Failures, GoOnAfterARestart)
{
    const std::string text = plant(failure("power", "", "2d", "3h") + failure("fibre", "", "5d", "2h"));
    const Folder folder;
    const std::string file = folder.file("olt.db");
    Scene all(text);
    all.simulator.advance(60 * day);
    all.simulator.keep_time();
    for (const ModelTime until : {13 * day, 13 * day + 1, 41 * day, 60 * day}) {
        Store store(file, false);
        Simulator simulator(store, {}, until == 13 * day ? scenario(text) : nullptr);
        simulator.advance(until);
        simulator.keep_time();
    }
    EXPECT_GT(all.olt().events_done(), 100u);
    const Store kept(file, false);
    EXPECT_EQ(kept.rows(), all.store.rows());
}

TEST(Failures, AWrongOneIsExplainedWithItsLine)
{
    for (const auto &[text, line, message] : std::initializer_list<std::tuple<std::string, int, std::string>>{
             {"[[failure]]\nmtbf = 60\nmttr = 1\n", 17, "of: expected \"power\", \"rogue\", \"fibre\" or \"laser\""},
             {failure("light"), 18, "of: expected \"power\", \"rogue\", \"fibre\" or \"laser\", found \"light\""},
             {"[[failure]]\nof = \"power\"\nmttr = 1\n", 17, "mtbf: expected a time of at least 60 s"},
             {failure("power", "", "59s"), 19, "mtbf: expected a time of at least 60 s, found \"59s\""},
             {failure("power", "", "1d", "0s"), 20, "mttr: expected a time of at least 1 s, found \"0s\""},
             {failure("power", "names = [\"c\"]"), 21, "names: there is no part c; known are"},
             {failure("power", "names = [\"a\"]"), 21, "names: there is no part a"},
             {failure("power", "names = [\"c*\"]"), 21, "names: there is no part c*"},
             {failure("power", "names = []"), 21,
              "names: expected a list of names, as [\"a-1\", \"b-*\"], found an array"},
             {failure("power", "names = [1]"), 21, "names: expected a list of names, as [\"a-1\", \"b-*\"]"},
             {failure("laser", "names = [\"a\"]"), 21, "names: expected without it: what fails is a part of the port"},
             {failure("power", "ports = \"3\""), 21, "ports: expected numbers from 1 to 2"},
             {failure("power", "olt = \"other\""), 21, "olt: there is no OLT other"},
             {failure("power", "name = \"a\""), 21, "name: an unknown key; did you mean names?"}})
        try {
            read(plant(text));
            ADD_FAILURE() << text;
        } catch (const ScenarioError &error) {
            EXPECT_THAT(error.what(), testing::StartsWith("test.toml:" + std::to_string(line) + ": " + message));
        }
}

} // namespace
} // namespace ponsim
