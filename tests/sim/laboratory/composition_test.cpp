// These tests check scenarios that include others and have variables.
#include "scenario/composition.h"

#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

#include "scenes.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;

// Returns the table without where its values stand.
std::string canonical(const toml_file::Value &value)
{
    return toml_file::write_toml(*value.table());
}

class CompositionTest : public testing::Test
{
protected:
    Folder folder;

    std::string file(const std::string &name, const std::string &text) const
    {
        std::filesystem::create_directories(std::filesystem::path(folder.file(name)).parent_path());
        std::ofstream(folder.file(name)) << text;
        return folder.file(name);
    }
    // Returns what is wrong with a file, without the name of the folder.
    std::string error_of(const std::string &name, const Overrides &overrides = {}) const
    {
        try {
            read_scenario_file(folder.file(name), overrides);
        } catch (const ScenarioError &error) {
            std::string text = error.what();
            for (size_t at = text.find(folder.file("")); at != text.npos; at = text.find(folder.file("")))
                text.erase(at, folder.file("").size());
            return text;
        }
        return "nothing";
    }
};

TEST_F(CompositionTest, AnIncludedFileStandsBeforeTheFile)
{
    file("parts/plant.toml",
         "seed = 5\n[service.home]\ndown = 10\n[[olt]]\nname = \"one\"\n[[event]]\nat = 1\ndo = \"age 1 1\"\n");
    const Scenario scenario = read_scenario_file(
        file("main.toml",
             "include = [\"parts/plant.toml\"]\n[[olt]]\nname = \"two\"\n[[event]]\nat = 1\ndo = \"age 1 2\"\n"));
    ASSERT_EQ(scenario.olts.size(), 2u);
    EXPECT_EQ(scenario.seed, 5u);
    EXPECT_EQ(scenario.olts[0].name, "one");
    ASSERT_EQ(scenario.olts[0].events.size(), 2u);
    EXPECT_EQ(scenario.olts[0].events[1].words, "age 1 2");
}

TEST_F(CompositionTest, WhatAFileSaysItselfHoldsInThePlaceOfWhatItIncludes)
{
    file("a.toml", "seed = 5\n[service.home]\ndescription = \"a\"\ndown = 10\n[service.shop]\ndescription = \"a\"\n");
    file("b.toml", "seed = 6\n[service.shop]\ndescription = \"b\"\n");
    const std::string main =
        file("main.toml", "include = [\"a.toml\", \"b.toml\"]\n[service.home]\ndescription = \"main\"\n"
                          "[[olt]]\n[[olt.port]]\nnumber = 1\n"
                          "[[olt.port.onu]]\nname = \"h\"\nservice = \"home\"\nid = 1\n"
                          "[[olt.port.onu]]\nname = \"s\"\nservice = \"shop\"\nid = 2\n");
    const Scenario scenario = read_scenario_file(main);
    EXPECT_EQ(scenario.seed, 6u);
    const Scene scene(scenario.olts.at(0));
    EXPECT_EQ(scene.port(1).bindings[1]->description, "main");
    EXPECT_EQ(scene.port(1).bindings[1]->sla_down, std::nullopt);
    EXPECT_EQ(scene.port(1).bindings[2]->description, "b");
}

TEST_F(CompositionTest, FilesAreNamedAsTheyAreSeenFromWhoIncludesThem)
{
    file("parts/inner/olt.toml", "[[olt]]\nname = \"inner\"\n");
    file("parts/plant.toml", "include = [\"inner/olt.toml\"]\n");
    EXPECT_EQ(read_scenario_file(file("main.toml", "include = [\"parts/plant.toml\"]\n")).olts.at(0).name, "inner");
}

TEST_F(CompositionTest, AWrongIncludeIsExplainedWithItsLine)
{
    file("number.toml", "seed = 1\ninclude = 5\n");
    EXPECT_EQ(error_of("number.toml"), "number.toml:2: include: expected a list of files, as [\"plant.toml\"]");
    file("missing.toml", "include = [\n\"nowhere.toml\"]\n");
    EXPECT_EQ(error_of("missing.toml"),
              "missing.toml:2: include: nowhere.toml: cannot be read: No such file or directory");
    file("self.toml", "include = [\"./self.toml\"]\n");
    EXPECT_EQ(error_of("self.toml"), "self.toml:1: include: ./self.toml includes itself");
    file("a.toml", "include = [\"b.toml\"]\n");
    file("b.toml", "\ninclude = [\"a.toml\"]\n");
    EXPECT_EQ(error_of("a.toml"), "b.toml:2: include: a.toml includes itself");
    for (int depth = 0; depth < 10; ++depth)
        file("deep" + std::to_string(depth) + ".toml", "include = [\"deep" + std::to_string(depth + 1) + ".toml\"]\n");
    EXPECT_EQ(error_of("deep0.toml"), "deep7.toml:1: include: expected at most 8 files that include one another");
    file("date.toml", "[variables]\na = 1\n[[olt]]\nname = 2026-11-22\n");
    EXPECT_THAT(error_of("date.toml"), HasSubstr("date.toml:4: expected no date"));
}

TEST_F(CompositionTest, AFileIncludedTwiceIsNoCycle)
{
    file("service.toml", "[service.home]\n");
    file("plant.toml", "include = [\"service.toml\"]\n[[olt]]\n");
    file("main.toml", "include = [\"service.toml\", \"plant.toml\"]\n");
    EXPECT_EQ(error_of("main.toml"), "nothing");
}

TEST_F(CompositionTest, AMistakeIsToldWithTheFileInWhichItIs)
{
    file("plant.toml", "[[olt]]\nports = 2\n[[olt.port]]\nnumber = 3\n");
    file("main.toml", "include = [\"plant.toml\"]\n");
    EXPECT_EQ(error_of("main.toml"), "plant.toml:4: number: expected a number from 1 to 2, found 3");
    file("plant.toml", "[[olt]]\nprots = 2\n");
    EXPECT_EQ(error_of("main.toml"), "plant.toml:2: prots: an unknown key; did you mean ports?");
    file("plant.toml", "[[olt]\n");
    EXPECT_THAT(error_of("main.toml"), testing::StartsWith("plant.toml:1: "));
}

TEST(Composition, ATextThatIsInNoFileIncludesNone)
{
    EXPECT_THROW(read_scenario("include = [\"plant.toml\"]\n", "text"), ScenarioError);
}

constexpr char with_variables[] = R"text([variables]
ports = 2
who = "home"
quiet = true
[service.home]
description = "${who} of ${ports} (${quiet})"
[[olt]]
ports = "${ports}"
[[olt.port]]
number = 1
[[olt.port.onu]]
name = "${who}"
service = "home"
silent = "${quiet}"
)text";

TEST(Composition, AVariableStandsForItsValue)
{
    const Scenario scenario = read_scenario(with_variables, "text");
    EXPECT_EQ(scenario.olts.at(0).settings.ports, 2u);
    const Scene scene(scenario.olts.at(0));
    EXPECT_EQ(scene.port(1).bindings[1]->description, "home of 2 (true)");
    EXPECT_TRUE(scene.onu(1, "home").silent);
}

TEST(Composition, AVariableCanHaveAnotherValueOfItsKind)
{
    const Scenario scenario = read_scenario(
        with_variables, "text", {.seed = 77, .variables = {{"ports", "8"}, {"who", "5"}, {"quiet", "false"}}});
    EXPECT_EQ(scenario.seed, 77u);
    EXPECT_EQ(scenario.olts.at(0).settings.ports, 8u);
    EXPECT_FALSE(Scene(scenario.olts.at(0)).onu(1, "5").silent);
}

TEST(Composition, AWrongVariableIsExplained)
{
    const auto error = [](const std::string &text, const Overrides &overrides) -> std::string {
        try {
            read_scenario(text, "text", overrides);
        } catch (const ScenarioError &wrong) {
            return wrong.what();
        }
        return "nothing";
    };
    const std::string plain = "[[olt]]\nname = \"${a}\"\n";
    EXPECT_EQ(error("[variables]\naa = 1\n" + plain, {}), "text:4: there is no variable a; did you mean aa?");
    EXPECT_EQ(error("[variables]\na = [1]\n" + plain, {}),
              "text:2: variables: expected a number, a text, true or false, found an array");
    EXPECT_EQ(error("variables = 1\n" + plain, {}), "text:1: variables: expected a table, found 1");
    EXPECT_EQ(error("[variables]\na = 1\n[[olt]]\nname = \"x${a\"\n", {}),
              "text:4: expected } behind the name of a variable");
    EXPECT_EQ(error(with_variables, {.seed = {}, .variables = {{"port", "1"}}}),
              "--set: there is no variable port; did you mean ports?");
    EXPECT_EQ(error(with_variables, {.seed = {}, .variables = {{"ports", "many"}}}),
              "--set: the variable ports is 2 in the scenario, and cannot be many");
    EXPECT_EQ(error("[[olt]]\n", {.seed = {}, .variables = {{"ports", "1"}}}), "--set: text has no variables");
}

TEST(Composition, WithoutVariablesATextIsAsItIs)
{
    const std::string text = "[service.home]\ndescription = \"${who}\"\n[[olt]]\n";
    EXPECT_EQ(read_scenario(text, "text").olts.at(0).settings.scenario, text);
}

TEST_F(CompositionTest, AStateNeedsTheFilesNoMore)
{
    file("plant.toml", with_variables);
    const std::string main = file("main.toml", "include = [\"plant.toml\"]\n[[event]]\nat = 60\ndo = \"age 1 1000\"\n");
    const std::string state = folder.file("olt.db");
    Rows before, after;
    const Question question{find_asked_view("onu_info"), 1};
    {
        Store store(state, false);
        Simulator simulator(store, {},
                            std::make_shared<const OltScenario>(
                                read_scenario_file(main, {.seed = {}, .variables = {{"ports", "4"}}}).olts.at(0)));
        before = ask(simulator.olt(), question);
    }
    std::filesystem::remove(folder.file("plant.toml"));
    std::filesystem::remove(main);
    Store store(state, false);
    Simulator simulator(store, {});
    EXPECT_EQ(simulator.settings().ports, 4u);
    after = ask(simulator.olt(), question);
    EXPECT_EQ(before.rows, after.rows);
    EXPECT_EQ(before.rows.size(), 1u);
    simulator.advance(60 * ms_per_second);
    EXPECT_EQ(simulator.olt().events_done(), 1u);
}

class ComposedScenario : public testing::TestWithParam<std::filesystem::path>
{
};

TEST_P(ComposedScenario, IsTheSameWhenItIsWrittenAndReadAgain)
{
    const toml_file::Value value = toml_file::read_toml(text_of_file(GetParam().string()), "a");
    EXPECT_EQ(canonical(toml_file::read_toml(canonical(value), "b")), canonical(value));
    const Scenario plain = read_scenario_file(GetParam().string());
    const Scenario composed = read_scenario_file(GetParam().string(), {.seed = plain.seed, .variables = {}});
    ASSERT_EQ(plain.olts.size(), composed.olts.size());
    for (size_t index = 0; index < plain.olts.size(); ++index) {
        const Scenario again = read_scenario(composed.olts[index].settings.scenario, "again");
        EXPECT_EQ(again.olts.at(index).events, plain.olts[index].events);
        EXPECT_EQ(again.olts.at(index).settings.seed, plain.olts[index].settings.seed);
        for (uint32_t port = 0; port < plain.olts[index].settings.ports; ++port) {
            const PortPopulation &first = plain.olts[index].settings.topology->ports[port];
            const PortPopulation &second = again.olts.at(index).settings.topology->ports[port];
            EXPECT_EQ(first.branches, second.branches);
            EXPECT_EQ(first.arrivals, second.arrivals);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ComposedScenario, testing::ValuesIn(scenarios_in(SCENARIOS)), scenario_name);

TEST(TomlText, HoldsAnyValue)
{
    const std::string text = "\"a b\" = \"\\\"\\\\\\u0001\\n\xc3\xa4\"\nb = [1, -2.5, 3.0, true, {c = [], d = {}}]\n"
                             "[e]\n[[e.f]]\ng = 1e30\n[[e.f]]\n";
    const std::string written = canonical(toml_file::read_toml(text, "a"));
    EXPECT_EQ(canonical(toml_file::read_toml(written, "b")), written);
    EXPECT_THAT(written, HasSubstr("\"a b\" = \"\\\"\\\\\\u0001\\u000a\xc3\xa4\"\n"));
    EXPECT_THAT(written, HasSubstr("[1, -2.5, 3.0, true, {\"c\" = [], \"d\" = {}}]"));
}

} // namespace
} // namespace ponsim
