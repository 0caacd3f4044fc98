// These tests check what a scenario may expect, and whether an OLT shows it.
#include "expectation/expectation.h"

#include <gmock/gmock.h>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

using testing::Contains;
using testing::HasSubstr;

// Port 1 of this OLT has three ONUs that are bound and one that waits. The first one loses its power after an hour.
constexpr char plant[] = R"(
[service.home]
assured = 1000
description = "home"

[[olt]]
ports = 2

[[olt.port]]
number = 1

[[olt.port.onu]]
name = "home"
count = 3
service = "home"
drop = 400

[[olt.port.onu]]
name = "guest"

[[event]]
at = "1h"
do = "power 1 home-1 off"
)";

std::string expect(const std::string &lines)
{
    return std::string(plant) + "[[expect]]\n" + lines + '\n';
}

// Returns what is found in place of what the lines expect, at the time that they say.
std::optional<std::string> objection(const std::string &lines)
{
    const OltScenario olt = read(expect(lines)).at(0);
    Scene scene(olt);
    scene.simulator.advance(olt.checks.at(0).at);
    return olt.checks.at(0).expectation->objection(scene.olt());
}

TEST(Expectation, IsAboutAColumnOfEveryRow)
{
    EXPECT_EQ(
        objection("at = 1\nview = \"onu_info\"\nonu = \"home-1\"\nport = 1\ncolumn = \"state\"\nequals = \"online\""),
        std::nullopt);
    EXPECT_EQ(objection("at = 1\nview = \"onu_info\"\nport = 1\ncolumn = \"distance\"\nat_least = 100"), std::nullopt);
    EXPECT_THAT(objection("at = \"2h\"\nview = \"onu_info\"\nport = 1\ncolumn = \"state\"\nnot = \"offline\""),
                testing::Optional(HasSubstr("\"offline\" at pon_port=1 onu_id=1 mac=")));
}

TEST(Expectation, IsLookedAtAfterWhatHappensAtItsTime)
{
    const std::string state =
        "view = \"onu_info\"\nport = 1\nonu = \"home-1\"\ncolumn = \"state\"\nequals = \"online\"";
    EXPECT_EQ(objection("at = 3599\n" + state), std::nullopt);
    EXPECT_EQ(objection("at = 3600\n" + state), "\"offline\"");
}

TEST(Expectation, WithoutAColumnItIsAboutTheNumberOfRows)
{
    EXPECT_EQ(objection("at = 1\nview = \"onu_info\"\nequals = 4"), std::nullopt);
    EXPECT_EQ(objection("at = 1\nview = \"onu_info\"\nport = 2\nequals = 0"), std::nullopt);
    EXPECT_EQ(objection("at = 1\nview = \"onu_info\"\nwhere = { state = \"online\", distance = 500 }\nequals = 2"),
              "3");
    EXPECT_EQ(objection("at = 1\nview = \"onu_info\"\nwhere = { state = \"waiting\" }\nat_least = 1\nat_most = 1"),
              std::nullopt);
}

TEST(Expectation, OfAColumnFailsWithoutRows)
{
    EXPECT_EQ(objection("at = 1\nview = \"onu_info\"\nport = 2\ncolumn = \"state\"\nnot = \"offline\""), "no row");
}

TEST(Expectation, IsAboutAFieldOfAnAnswer)
{
    EXPECT_EQ(objection("at = 1\nview = \"sla_of_port\"\nport = 1\ncolumn = \"assured\"\nequals = 3000"), std::nullopt);
    EXPECT_EQ(objection("at = 1\nview = \"onu_sn\"\nport = 1\nonu = \"home-1\"\ncolumn = \"vendor\"\nequals = \"\""),
              "\"" + std::string(Scene(plant).olt().device_of(Scene(plant).onu(1, "home-1").mac).type->vendor) + "\"");
    EXPECT_EQ(objection("at = 1\nview = \"optics_diagnostics\"\nport = 1\ncolumn = \"temperature\"\nat_most = -3.5"),
              Scene(plant).olt().now() == 0 ? objection("at = 1\nview = \"optics_diagnostics\"\nport = 1\n"
                                                        "column = \"temperature\"\nat_least = 99.5")
                                            : "");
}

TEST(Expectation, AnOnuThatCannotAnswerIsTold)
{
    EXPECT_EQ(
        objection("at = \"2h\"\nview = \"onu_sn\"\nport = 1\nonu = \"home-1\"\ncolumn = \"vendor\"\nequals = \"X\""),
        "no answer: " + std::string(catalogue::find_status(PON_ERR_OFFLINE)->brief));
    EXPECT_EQ(objection("at = 1\nview = \"onu_sn\"\nport = 1\nonu = \"guest\"\ncolumn = \"vendor\"\nequals = \"X\""),
              "no answer: " + std::string(catalogue::find_status(PON_ERR_NOT_BOUND)->brief));
}

TEST(Expectation, ComparesTextsInParts)
{
    const std::string description =
        "at = 1\nview = \"onu_info\"\nport = 1\nonu = \"home-2\"\ncolumn = \"description\"\n";
    EXPECT_EQ(objection(description + "contains = \"om\""), std::nullopt);
    EXPECT_EQ(objection(description + "contains = \"mo\""), "\"home\"");
    EXPECT_EQ(objection(description + "matches = \"h.m(e|o)\""), std::nullopt);
    EXPECT_EQ(objection(description + "matches = \"om\""), "\"home\"");
}

TEST(Expectation, ANullCellIsOnlyNullAndNotSomethingElse)
{
    const std::string id = "at = 1\nview = \"onu_info\"\nport = 1\nonu = \"guest\"\ncolumn = \"onu_id\"\n";
    EXPECT_EQ(objection(id + "null = true"), std::nullopt);
    EXPECT_EQ(objection(id + "not = 5"), std::nullopt);
    EXPECT_EQ(objection(id + "null = false"), "null");
    EXPECT_EQ(objection(id + "at_least = 0"), "null");
    EXPECT_EQ(objection(id + "equals = 0"), "null");
}

TEST(Expectation, ComesAsOftenAsItSaysToTheOltThatItNames)
{
    const std::vector<OltScenario> olts =
        read("[[olt]]\ncount = 2\n[[expect]]\nolt = \"olt-2\"\nat = 5\nevery = 10\ntimes = 3\nview = \"base_info\"\n"
             "equals = 16\n");
    EXPECT_EQ(olts.at(0).checks.size(), 0u);
    ASSERT_EQ(olts.at(1).checks.size(), 3u);
    EXPECT_EQ(olts.at(1).checks.at(2).at, 25 * ms_per_second);
    EXPECT_EQ(olts.at(1).checks.at(0).expectation->line, 3u);
}

TEST(Expectation, EachViewAndAnswerCanBeAsked)
{
    const Scene scene(plant);
    const Mac onu = scene.onu(1, "home-2").mac;
    size_t answered = 0;
    for (const AskedView &view : asked_views()) {
        const Rows rows = ask(scene.olt(), {&view, 1, view.tells_onus_apart() ? std::optional(onu) : std::nullopt, 1});
        EXPECT_NE(rows.status, PON_ERR_UNKNOWN_COMMAND) << view.name;
        EXPECT_NE(rows.status, PON_ERR_BAD_RECORD) << view.name;
        answered += rows.status == BSP_OK;
        for (const std::vector<CellValue> &row : rows.rows)
            EXPECT_EQ(row.size(), view.columns.size()) << view.name;
    }
    EXPECT_GT(answered, asked_views().size() * 3 / 4);
}

TEST(Expectation, NoTwoViewsHaveTheSameName)
{
    std::set<std::string_view> names;
    for (const AskedView &view : asked_views())
        EXPECT_TRUE(names.insert(view.name).second) << view.name;
}

TEST(Expectation, AsksAndChangesNothing)
{
    Scene asked(plant), left_alone(plant);
    asked.simulator.advance(2000);
    for (const AskedView &view : asked_views())
        ask(asked.olt(), {&view, 1});
    for (Scene *scene : {&asked, &left_alone}) {
        scene->simulator.advance(7200 * ms_per_second);
        scene->simulator.keep_time();
    }
    EXPECT_EQ(asked.store.rows(), left_alone.store.rows());
}

struct WrongExpectation {
    std::string lines;
    std::string message; // behind the name of the file and the line in the table
    uint32_t line;
};

TEST(Expectation, AWrongOneIsExplainedWithItsLine)
{
    const auto first = static_cast<uint32_t>(std::ranges::count(std::string(plant), '\n')) + 1;
    const std::string state = "at = 1\nview = \"onu_info\"\ncolumn = \"state\"\n";
    const WrongExpectation all[] = {
        {"view = \"onu_info\"\nequals = 1", "at: expected a time", 0},
        {"at = 1\nequals = 1", "view: expected a name", 0},
        {"at = 1\nview = \"onu_inf\"\nequals = 1", "view: there is no view onu_inf; did you mean onu_info?", 2},
        {"at = 1\nview = \"onu_info\"\ncolumn = \"stat\"\nequals = 1",
         "column: there is no column stat; did you mean state?", 3},
        {state, "equals: expected at least one of equals, not, at_least, at_most, contains, matches and null", 0},
        {state + "equals = 5", "equals: expected a text, found 5", 4},
        {state + "at_least = 5", "at_least: this compares numbers, and what is looked at is a text", 4},
        {state + "matches = \"(\"", "matches: expected a regular expression, found \"(\"", 4},
        {"at = 1\nview = \"onu_info\"\ncontains = \"5\"",
         "contains: this compares texts, and what is looked at is a number", 3},
        {state + "null = 1", "null: expected true or false, found 1", 4},
        {state + "equal = \"online\"", "equal: an unknown key; did you mean equals?", 4},
        {state + "equals = \"online\"\nport = 3", "port: expected a number from 1 to 2, found 3", 5},
        {state + "equals = \"online\"\nonu = \"home-1\"", "onu: expected with the port at which it is", 5},
        {state + "equals = \"online\"\nport = 1\nonu = \"hom-1\"",
         "onu: there is no ONU at PON port 1 with the name hom-1; did you mean home-1?", 6},
        {"at = 1\nview = \"base_info\"\nport = 1\nonu = \"home-1\"\nequals = 1",
         "onu: expected without it: the view base_info does not tell ONUs apart", 4},
        {"at = 1\nview = \"onu_info\"\nequals = 1\nwhere = { stat = \"online\" }",
         "where: there is no column stat; did you mean state?", 4},
        {"at = 1\nview = \"onu_info\"\nequals = 1\nwhere = { state = 1 }", "where: state: expected a text, found 1", 4},
        {"at = 1\nview = \"onu_info\"\nequals = 1\nwhere = 1", "where: expected a table, found 1", 4},
        {"at = 1\nview = \"onu_info\"\nequals = 1\nolt = \"ol\"", "olt: there is no OLT ol; did you mean olt?", 4},
        {"at = 1\nview = \"onu_info\"\nequals = 1\nevery = 5", "every: expected every and times together", 4},
    };
    for (const WrongExpectation &wrong : all)
        try {
            read(expect(wrong.lines));
            ADD_FAILURE() << wrong.lines;
        } catch (const ScenarioError &error) {
            EXPECT_EQ(error.what(), "test.toml:" + std::to_string(first + wrong.line) + ": " + wrong.message);
        }
}

} // namespace
} // namespace ponsim
