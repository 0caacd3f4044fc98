// These tests check loads that change over the day.
#include "scenario/agenda.h"

#include <gmock/gmock.h>

#include "scenes.h"

namespace ponsim
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

constexpr ModelTime hour = 3600 * ms_per_second;
constexpr ModelTime day = 24 * hour;

std::string plant(const std::string &curve,
                  const std::string &service = "load_up = 1000\nload_down = 8000\ncurve = \"evening\"")
{
    return curve + "[service.home]\n" + service +
           "\n[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\nname = \"a\"\ncount = 3\nservice = "
           "\"home\"\n"
           "[[olt.port.onu]]\nname = \"b\"\n";
}

constexpr char evening[] = "[curve.evening]\n\"06:00\" = 50\n\"20:00\" = 100\n\"23:30\" = 10\n";

std::vector<uint32_t> loads(const Scene &scene, Direction direction)
{
    std::vector<uint32_t> all;
    for (const char *name : {"a-1", "a-2", "a-3", "b"}) {
        const OnuRecord record = scene.port(1).record(scene.onu(1, name).mac);
        all.push_back((direction == Direction::up ? record.load_up : record.load_down).value_or(77));
    }
    return all;
}

TEST(Curves, LoadsFollowTheTimeOfDay)
{
    Scene scene(plant(evening));
    for (const auto &[at, up, down] : std::initializer_list<std::tuple<ModelTime, uint32_t, uint32_t>>{
             {1, 100, 800}, // as at the end of the day before
             {6 * hour - 1, 100, 800},
             {6 * hour, 500, 4000},
             {20 * hour, 1000, 8000},
             {day, 100, 800},
             {day + 6 * hour, 500, 4000},
             {9 * day + 21 * hour, 1000, 8000}}) {
        scene.simulator.advance(at);
        EXPECT_THAT(loads(scene, Direction::up), ElementsAre(up, up, up, 77)) << at;
        EXPECT_THAT(loads(scene, Direction::down), ElementsAre(down, down, down, 77)) << at;
    }
}

TEST(Curves, AStepAtMidnightIsTheFirst)
{
    Scene scene(plant("[curve.evening]\n\"00:00\" = 200\n"));
    scene.simulator.advance(3 * day);
    EXPECT_THAT(loads(scene, Direction::up), ElementsAre(2000, 2000, 2000, 77));
    EXPECT_EQ(scene.olt().events_done(), 8u); // two directions, on four days
}

TEST(Curves, AreLoggedInALineForAllOnus)
{
    Scene scene(plant(evening));
    EXPECT_THAT(scene.log_until(7 * 3600),
                ElementsAre("load at 0s: evening up: 10 percent", "load at 0s: evening down: 10 percent",
                            "load at 6h: evening up: 50 percent", "load at 6h: evening down: 50 percent"));
}

TEST(Curves, ConcernTheDirectionWhoseLoadIsStated)
{
    Scene scene(plant(evening, "load_up = 1000\ncurve = \"evening\""));
    scene.simulator.advance(7 * hour);
    EXPECT_THAT(loads(scene, Direction::up), ElementsAre(500, 500, 500, 77));
    EXPECT_THAT(loads(scene, Direction::down), ElementsAre(77, 77, 77, 77));
}

TEST(Curves, StretchLoadsThatAreDrawn)
{
    Scene scene(plant(evening, "load_up = { uniform = [1000, 2000] }\ncurve = \"evening\""));
    scene.simulator.advance(6 * hour);
    for (const char *name : {"a-1", "a-2", "a-3"})
        EXPECT_EQ(scene.port(1).record(scene.onu(1, name).mac).load_up, *scene.onu(1, name).load_up / 2) << name;
}

TEST(Curves, TrafficFollowsThem)
{
    Scene scene(plant(evening));
    const auto octets = [&] {
        const Rows rows = ask(scene.olt(), {find_asked_view("port_stats"), 1});
        return std::get<double>(rows.rows.at(0).at(*find_asked_view("port_stats")->column("in_octets")));
    };
    scene.simulator.advance(1 * hour);
    const double begin = octets();
    scene.simulator.advance(2 * hour);
    const double low = octets() - begin;
    scene.simulator.advance(21 * hour);
    const double evening_begin = octets();
    scene.simulator.advance(22 * hour);
    EXPECT_NEAR((octets() - evening_begin) / low, 10, 0.5);
}

TEST(Curves, GoOnAfterARestart)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    const auto scenario = std::make_shared<const OltScenario>(read(plant(evening)).at(0));
    Scene all(*scenario);
    all.simulator.advance(3 * day + 7 * hour);
    all.simulator.keep_time();
    for (const ModelTime until : {5 * hour, 6 * hour, 2 * day + 22 * hour, 3 * day + 7 * hour}) {
        Store store(file, false);
        Simulator simulator(store, {}, until == 5 * hour ? scenario : nullptr);
        simulator.advance(until);
        simulator.keep_time();
    }
    EXPECT_EQ(Store(file, false).rows(), all.store.rows());
}

TEST(Curves, AWrongOneIsExplainedWithItsLine)
{
    const std::string points = "curve: expected 1 to 96 times of day with a percentage, as \"20:00\" = 100";
    for (const auto &[text, message] : std::initializer_list<std::pair<std::string, std::string>>{
             {plant("curve = 1\n"), "1: curve: expected a table, found 1"},
             {plant("[curve]\nevening = 1\n"), "2: " + points},
             {plant("[curve.evening]\n"), "1: " + points},
             {plant("[curve.evening]\n\"24:00\" = 1\n"),
              "2: curve: expected a time of day from 00:00 to 23:59, found 24:00"},
             {plant("[curve.evening]\n\"6:00\" = 1\n"),
              "2: curve: expected a time of day from 00:00 to 23:59, found 6:00"},
             {plant("[curve.evening]\n\"06:00\" = 1001\n"),
              "2: curve: expected a percentage from 0 to 1000 at 06:00, found 1001"},
             {plant("[curve.evening]\n\"06:00\" = 1\n", "load_up = 5\ncurve = \"evning\""),
              "5: curve: there is no curve evning; did you mean evening?"},
             {plant("[curve.evening]\n\"06:00\" = 1\n", "curve = \"evening\""),
              "4: curve: expected with load_up or load_down: a curve is a percentage of these"}})
        try {
            read(text);
            ADD_FAILURE() << text;
        } catch (const ScenarioError &error) {
            EXPECT_EQ(error.what(), "test.toml:" + message);
        }
}

} // namespace
} // namespace ponsim
