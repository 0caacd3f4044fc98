// These tests check populations that are drawn by the seed.
#include "scenario/distribution.h"

#include <map>
#include <numeric>

#include <gmock/gmock.h>

#include "scenes.h"

namespace ponsim
{
namespace
{

// Returns a scenario with 128 ONUs, of which each line says something.
std::string crowd(const std::string &lines, const std::string &service = "")
{
    return "[kind.desk]\nmodel = \"S100\"\n[kind.soho]\nmodel = \"S040\"\n[service.home]\n" + service +
           "\n[service.guest]\nbound = false\n[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\nname = "
           "\"a\"\n"
           "count = 128\n" +
           lines + '\n';
}

std::vector<Arrival> arrivals(const std::string &text, uint64_t seed = 1)
{
    return read_scenario(text, "test.toml", {.seed = seed, .variables = {}})
        .olts.at(0)
        .settings.topology->ports.at(0)
        .arrivals;
}

std::vector<uint32_t> drops(const std::string &text, uint64_t seed = 1)
{
    std::vector<uint32_t> all;
    for (const Arrival &arrival : arrivals(text, seed))
        all.push_back(arrival.distance - 100); // the feeder has 100 m
    return all;
}

TEST(Distribution, AUniformNumberIsAnywhereWithinItsBounds)
{
    std::vector<uint32_t> all;
    for (uint64_t seed = 1; seed <= 20; ++seed)
        for (const uint32_t drop : drops(crowd("drop = { uniform = [20, 29] }"), seed))
            all.push_back(drop);
    std::map<uint32_t, size_t> counts;
    for (const uint32_t drop : all)
        ++counts[drop];
    EXPECT_EQ(counts.size(), 10u);
    EXPECT_EQ(counts.begin()->first, 20u);
    for (const auto &[drop, count] : counts)
        EXPECT_NEAR(static_cast<double>(count), 256, 64) << drop;
}

TEST(Distribution, ANormalNumberHasItsMeanAndDeviation)
{
    std::vector<double> all;
    for (uint64_t seed = 1; seed <= 20; ++seed)
        for (const uint32_t drop : drops(crowd("drop = { normal = [1000, 100] }"), seed))
            all.push_back(drop);
    const double mean = std::accumulate(all.begin(), all.end(), 0.0) / static_cast<double>(all.size());
    double squares = 0;
    size_t within = 0;
    for (const double drop : all) {
        squares += (drop - mean) * (drop - mean);
        within += drop >= 900 && drop <= 1100;
    }
    EXPECT_NEAR(mean, 1000, 8);
    EXPECT_NEAR(squares / static_cast<double>(all.size()), 10000, 1000);
    EXPECT_NEAR(static_cast<double>(within) / static_cast<double>(all.size()), 0.683, 0.03);
}

TEST(Distribution, ANormalNumberStaysWithinReach)
{
    const std::vector<uint32_t> near = drops(crowd("drop = { normal = [5, 100] }"));
    EXPECT_EQ(*std::ranges::min_element(near), 0u);
    const std::string far =
        "[[olt]]\n[[olt.port]]\nnumber = 1\n[[olt.port.branch]]\nname = \"f\"\nlength = 15000\nsplit = 32\n"
        "[[olt.port.onu]]\nname = \"a\"\ncount = 32\ndrop = { normal = [5000, 2000] }\n";
    for (const Arrival &arrival : arrivals(far))
        EXPECT_LE(arrival.distance, 20000u);
}

TEST(Distribution, ANameComesAsOftenAsItsWeightSays)
{
    size_t desks = 0, all = 0;
    for (uint64_t seed = 1; seed <= 20; ++seed) {
        const OltScenario olt = read_scenario(crowd("kind = { choice = { desk = 3, soho = 1 } }"), "test.toml",
                                              {.seed = seed, .variables = {}})
                                    .olts.at(0);
        for (const auto &[mac, equipment] : olt.settings.topology->equipment) {
            desks += equipment.kind->model == "S100";
            ++all;
        }
    }
    EXPECT_EQ(all, 2560u);
    EXPECT_NEAR(static_cast<double>(desks) / static_cast<double>(all), 0.75, 0.03);
}

TEST(Distribution, AServiceThatIsDrawnIsProvisioned)
{
    const Scene scene(crowd("service = { choice = { home = 1, guest = 1 } }"));
    const auto bound = std::ranges::count_if(scene.port(1).bindings, [](const auto &each) { return each.has_value(); });
    EXPECT_NEAR(static_cast<double>(bound), 64, 30);
}

TEST(Distribution, LoadsAndSwitchesAreDrawn)
{
    const std::vector<Arrival> all =
        arrivals(crowd("service = \"home\"\nsilent = { chance = 25 }", "load_up = { uniform = [100, 200] }\n"
                                                                       "load_down = { normal = [5000, 500] }"));
    std::set<uint32_t> up, down;
    size_t silent = 0;
    for (const Arrival &arrival : all) {
        EXPECT_GE(arrival.load_up.value(), 100u);
        EXPECT_LE(arrival.load_up.value(), 200u);
        up.insert(*arrival.load_up);
        down.insert(arrival.load_down.value());
        silent += arrival.silent;
    }
    EXPECT_GT(up.size(), 40u);
    EXPECT_GT(down.size(), 80u);
    EXPECT_NEAR(static_cast<double>(silent), 32, 20);
}

TEST(Distribution, FollowsFromTheSeedAndNotFromWhatElseIsDrawn)
{
    const std::string drop = "drop = { uniform = [20, 9000] }\n";
    EXPECT_EQ(drops(crowd(drop)), drops(crowd(drop)));
    EXPECT_NE(drops(crowd(drop), 1), drops(crowd(drop), 2));
    EXPECT_EQ(drops(crowd(drop)),
              drops(crowd(drop + "kind = { choice = { desk = 3, soho = 1 } }\nsilent = { chance = 5 }")));
}

TEST(Distribution, AWrongOneIsExplainedWithItsLine)
{
    const std::string numbers =
        "expected a number, { uniform = [LEAST, GREATEST] } or { normal = [MEAN, DEVIATION] }, of "
        "numbers from 0 to 19900";
    for (const auto &[line, message] : std::initializer_list<std::pair<std::string, std::string>>{
             {"drop = { uniform = [30, 20] }", "drop: expected uniform = [LEAST, GREATEST] of numbers from 0 to 19900"},
             {"drop = { uniform = [0, 19901] }",
              "drop: expected uniform = [LEAST, GREATEST] of numbers from 0 to 19900"},
             {"drop = { normal = [20] }", "drop: " + numbers},
             {"drop = { normal = [20, 0] }", "drop: " + numbers},
             {"drop = { norml = [20, 5] }", "drop: " + numbers},
             {"drop = { normal = [20, 5], uniform = [1, 2] }", "drop: " + numbers},
             {"drop = 20001", "drop: expected a number from 0 to 20000, found 20001"},
             {"kind = { choice = {} }", "kind: expected a name, or { choice = { NAME = WEIGHT, ... } }"},
             {"kind = { choice = { desk = 0 } }", "kind: expected a weight from 1 to 1000000 for desk, found 0"},
             {"kind = { choice = { dsk = 1 } }", "kind: there is no kind dsk; did you mean desk?"},
             {"service = { choice = { home = 1, guest = 1 } }\nid = 0",
              "id: expected with a service that binds the ONU"},
             {"silent = { chance = 101 }", "silent: expected true, false or { chance = PERCENT } from 0 to 100"}}) {
        const auto at = 16 + std::ranges::count(line, '\n');
        try {
            read(crowd(line));
            ADD_FAILURE() << line;
        } catch (const ScenarioError &error) {
            EXPECT_EQ(error.what(), "test.toml:" + std::to_string(at) + ": " + message);
        }
    }
}

} // namespace
} // namespace ponsim
