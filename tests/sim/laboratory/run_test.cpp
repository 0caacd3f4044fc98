// These tests check the runs of scenarios that are tests, and the reports of them.
#include "laboratory/run.h"

#include <fstream>

#include <gmock/gmock.h>

#include "laboratory/report.h"
#include "laboratory/xml.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;
using testing::Not;

constexpr char story[] = R"([[olt]]
ports = 1
[[olt.port]]
number = 1
[[olt.port.onu]]
name = "home"
count = 4
[[event]]
at = 100
do = "power 1 home-2 off"
[[expect]]
at = 50
view = "onu_info"
equals = 4
[[expect]]
at = 150
view = "onu_info"
equals = 4
[[expect]]
at = 10
every = 10
times = 20
view = "onu_info"
port = 1
onu = "home-1"
column = "distance"
at_most = 700
)";

class RunTest : public testing::Test
{
protected:
    Folder folder;

    std::string file(const std::string &name, const std::string &text) const
    {
        std::ofstream(folder.file(name)) << text;
        return folder.file(name);
    }
    TestOptions options(const std::string &text) const { return {{file("story.toml", text)}, {}, {}, 1}; }
};

TEST_F(RunTest, LooksAtEveryExpectationAtItsTime)
{
    const std::vector<TestRun> tests = run_tests(options(story));
    ASSERT_EQ(tests.size(), 1u);
    EXPECT_EQ(tests[0].reached(), 22u);
    EXPECT_EQ(tests[0].seed, 1u);
    std::vector<std::string> found;
    for (const CheckResult &result : tests[0].results)
        if (result.found && result.check.expectation->line < 19)
            found.push_back(std::to_string(result.check.at / ms_per_second) + ": " + *result.found);
    EXPECT_THAT(found, testing::ElementsAre("150: 3"));
}

TEST_F(RunTest, ASeedTakesThePlaceOfThatOfTheScenario)
{
    TestOptions given = options(story);
    given.seeds = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    size_t far = 0, near = 0;
    for (const TestRun &test : run_tests(given))
        (test.failed() > 1 ? far : near) += 1; // the ONU is farther than 700 m, or is not
    EXPECT_GT(far, 0u);
    EXPECT_GT(near, 0u);
}

TEST_F(RunTest, IsTheSameWithSeveralJobs)
{
    TestOptions given = options(story);
    given.files.push_back(
        file("other.toml", std::string(story) + "[[expect]]\nat = 1\nview = \"base_info\"\nequals = 2\n"));
    for (uint64_t seed = 1; seed <= 12; ++seed)
        given.seeds.push_back(seed);
    const std::vector<TestRun> one = run_tests(given);
    given.jobs = 4;
    const std::vector<TestRun> four = run_tests(given);
    EXPECT_EQ(report_of(one), report_of(four));
    EXPECT_EQ(junit_of(one), junit_of(four));
    EXPECT_THAT(report_of(one), HasSubstr("24 runs, 540 checks: "));
}

TEST_F(RunTest, EndsWhereItIsTold)
{
    TestOptions given = options(story);
    given.until = 60 * ms_per_second;
    const std::vector<TestRun> tests = run_tests(given);
    EXPECT_EQ(tests[0].reached(), 7u);
    EXPECT_THAT(report_of(tests), HasSubstr("; 15 not reached\n"));
    EXPECT_THAT(junit_of(tests), HasSubstr("<skipped/>"));
}

TEST_F(RunTest, AWrongScenarioIsNoRun)
{
    const std::vector<TestRun> tests = run_tests(options("seed = -1\n[[olt]]\n"));
    EXPECT_TRUE(tests[0].wrong);
    EXPECT_THAT(report_of(tests), HasSubstr("story.toml:1: seed: expected a number from 0"));
    EXPECT_THAT(report_of(tests), HasSubstr("1 run, 0 checks; 1 run could not be made\n"));
    EXPECT_THAT(junit_of(tests), HasSubstr("<error message="));
}

TEST_F(RunTest, SaysWhichSeedWhereAndWhen)
{
    const TestOptions given = options(story);
    EXPECT_THAT(report_of(run_tests(given)),
                HasSubstr(given.files[0] + ":15: seed 1, at 2min 30s: expected onu_info rows equals 4, found 3\n"));
}

TEST_F(RunTest, NamesTheOltWhereThereAreSeveral)
{
    const std::vector<TestRun> tests =
        run_tests(options("[[olt]]\ncount = 2\n[[expect]]\nat = 1\nview = \"base_info\"\nequals = 1\n"));
    EXPECT_THAT(report_of(tests), HasSubstr("story.toml:3: seed 1, OLT olt-2, at 1s: expected "));
    EXPECT_THAT(junit_of(tests), HasSubstr("line 3 at olt-2: base_info rows equals 1"));
}

TEST_F(RunTest, AJunitReportHasACaseForEachExpectation)
{
    const std::string report = junit_of(run_tests(options(story)));
    EXPECT_THAT(report,
                testing::StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"ponsim test\">\n"));
    EXPECT_THAT(report, HasSubstr("story.toml seed 1\" tests=\"3\" failures=\""));
    EXPECT_THAT(report, HasSubstr("name=\"line 11: onu_info rows equals 4\"/>\n"));
    EXPECT_THAT(report, HasSubstr("name=\"line 15: onu_info rows equals 4\"><failure message=\"at 2min 30s: expected "
                                  "onu_info rows equals 4, found 3\">"));
    EXPECT_THAT(report, HasSubstr("onu=&quot;home-1&quot;"));
}

TEST(Xml, HoldsAnyText)
{
    EXPECT_EQ(escaped_xml("a<b>&\"c'\n\xc3\xa4"), "a&lt;b&gt;&amp;&quot;c'&#10;\xc3\xa4");
    EXPECT_EQ(escaped_xml(std::string_view("\x01\0\xff\xc3", 4)), "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(escaped_xml("\xef\xbf\xbe"), "\xef\xbf\xbd");
    EXPECT_EQ(escaped_xml(""), "");
}

} // namespace
} // namespace ponsim
