// These tests report what a command came to at many OLTs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "call/json.h"
#include "fleet/rollout/report.h"
#include "olts.h"

namespace
{

using namespace fleet;
using testing::ElementsAre;
using testing::SizeIs;

TEST(Report, PutsEqualOutcomesTogether)
{
    const Results results{{"olt-10", {State::done, 0, "fine", ""}},
                          {"olt-9", {State::done, 0, "fine", ""}},
                          {"a", {State::failed, 1, "", "no"}},
                          {"b", {State::failed, 2, "", "no"}},
                          {"olt-2", {State::done, 0, "fine", ""}}};
    const std::vector<Group> groups = groups_of(results);
    ASSERT_THAT(groups, SizeIs(3));
    EXPECT_THAT(groups[0].olts, ElementsAre("olt-2", "olt-9", "olt-10"));
    EXPECT_THAT(groups[1].olts, ElementsAre("a"));
    EXPECT_EQ(groups[2].result.exit, 2);
}

TEST(Report, NamesThatCountUpAreShort)
{
    EXPECT_EQ(names_text(olts(17), 0), "olt-1..olt-17");
    EXPECT_EQ(names_text({"olt-1", "olt-2", "south-3"}, 0), "olt-1, olt-2, south-3");
    EXPECT_EQ(names_text({"a-008", "a-009", "a-010", "a-11"}, 0), "a-008..a-010, a-11");
    EXPECT_EQ(names_text({"a", "b", "c"}, 0), "a, b, c");
    EXPECT_EQ(names_text({"7", "8", "9", "10"}, 0), "7..10");
    EXPECT_EQ(names_text({"a18446744073709551615", "a18446744073709551616"}, 0),
              "a18446744073709551615, a18446744073709551616");
    EXPECT_EQ(names_text({}, 0), "");
}

TEST(Report, NamesAreCutToTheirWidth)
{
    const std::vector<std::string> names{"alpha", "beta", "gamma", "delta"};
    EXPECT_EQ(names_text(names, 25), "alpha, beta, gamma, delta");
    EXPECT_EQ(names_text(names, 24), "alpha, beta and 2 more");
    EXPECT_EQ(names_text(names, 22), "alpha, beta and 2 more");
    EXPECT_EQ(names_text(names, 3), "alpha and 3 more") << "one is always there";
}

TEST(Report, CountsAreWrittenForPeople)
{
    Results results;
    for (const std::string &olt : olts(980))
        results[olt] = {State::done};
    for (const std::string &olt : olts(10, "f"))
        results[olt] = {State::failed, 1};
    EXPECT_EQ(totals_text(results, 1010), "2,000 OLTs: 980 done, 10 failed, 1,010 not begun");
    EXPECT_EQ(totals_text({{"a", {State::unreachable, 3}}}), "1 OLT: 1 unreachable");
}

TEST(Report, IsATextForPeople)
{
    const Results results{{"n-1", {State::done, 0, "PORT\n1\n", ""}},
                          {"n-2", {State::done, 0, "PORT\n1\n", ""}},
                          {"x", {State::failed, 1, "", "ponctl: \x1b[31m\n"}},
                          {"y", {State::unreachable, 3, "", "nobody answers"}}};
    EXPECT_EQ(report_text(results, 80), "n-1, n-2 (2 OLTs): done\n"
                                        "  PORT\n"
                                        "  1\n"
                                        "\n"
                                        "x: failed, exit code 1\n"
                                        "  ponctl: \\x1b[31m\n"
                                        "\n"
                                        "y: unreachable\n"
                                        "  nobody answers\n");
    EXPECT_EQ(report_text({}, 80), "");
}

TEST(Report, IsJsonForPrograms)
{
    const Results results{{"n-10", {State::done, 0, "[{\"port\": 1}]\n", ""}},
                          {"n-9", {State::failed, 1, "no document", "ponctl: no"}},
                          {"n-8", {State::unreachable, 3, "", ""}}};
    EXPECT_EQ(call::compact(report_json(results)),
              R"([{"olt":"n-8","state":"unreachable","exit":3,"result":null,"errors":null},)"
              R"({"olt":"n-9","state":"failed","exit":1,"result":"no document","errors":"ponctl: no"},)"
              R"({"olt":"n-10","state":"done","exit":0,"result":[{"port":1}],"errors":null}])");
}

} // namespace
