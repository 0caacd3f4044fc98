// These tests check ponsim test as a program: its options, what it prints, and its exit status.
#include "daemon.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "support.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;

constexpr char good[] = "[[olt]]\nports = 1\n[[expect]]\nat = 1\nview = \"base_info\"\nequals = 1\n";
constexpr char bad[] = "[[olt]]\nports = 2\n[[expect]]\nat = 1\nview = \"base_info\"\nequals = 1\n";

class TestCommand : public testing::Test
{
protected:
    Folder folder;
    int status = -1;

    std::string file(const std::string &name, const std::string &text) const
    {
        std::ofstream(folder.file(name)) << text;
        return folder.file(name);
    }
    std::string run(std::vector<std::string> words)
    {
        words.insert(words.begin(), "test");
        return Daemon(std::move(words)).rest(status);
    }
};

TEST_F(TestCommand, GoesWellWhenAllExpectationsHold)
{
    EXPECT_EQ(run({file("good.toml", good)}), "1 run, 1 check: all hold\n");
    EXPECT_EQ(status, 0);
}

TEST_F(TestCommand, FailsWhenOneDoesNotHold)
{
    const std::string name = file("bad.toml", bad);
    EXPECT_EQ(run({file("good.toml", good), name, "--seeds", "4-5"}),
              name + ":3: seed 4, at 1s: expected base_info rows equals 1, found 2\n" + name +
                  ":3: seed 5, at 1s: expected base_info rows equals 1, found 2\n" +
                  "4 runs, 4 checks: 2 failed, in 2 runs\n");
    EXPECT_EQ(status, 1);
}

TEST_F(TestCommand, AWrongScenarioIsWrongUsage)
{
    EXPECT_THAT(run({file("wrong.toml", "[[olt]]\nprots = 1\n")}), HasSubstr("wrong.toml:2: prots: an unknown key"));
    EXPECT_EQ(status, 2);
    EXPECT_THAT(run({folder.file("nowhere.toml")}), HasSubstr("nowhere.toml: cannot be read"));
    EXPECT_EQ(status, 2);
}

TEST_F(TestCommand, WarnsWhereNothingIsExpected)
{
    EXPECT_THAT(run({file("silent.toml", "[[olt]]\n")}), HasSubstr("silent.toml: there is no [[expect]]"));
    EXPECT_EQ(status, 0);
}

TEST_F(TestCommand, WrongUsageIsExplained)
{
    const std::string name = file("good.toml", good);
    for (const auto &[words, message] : std::initializer_list<std::pair<std::vector<std::string>, const char *>>{
             {{}, "FILE"},
             {{name, "--seeds", "5-4"}, "expected seeds, as 7 or 1-100"},
             {{name, "--seeds", "1-10001"}, "expected seeds, as 7 or 1-100"},
             {{name, "--until", "tomorrow"}, "expected seconds, or a time as"},
             {{name, "--jobs", "0"}, "--jobs"},
             {{"--seed", "5", name}, "test takes --seeds"}}) {
        EXPECT_THAT(run(words), HasSubstr(message));
        EXPECT_EQ(status, 2) << message;
    }
}

TEST_F(TestCommand, VariablesHaveTheValuesThatAreGiven)
{
    const std::string name =
        file("ports.toml", "[variables]\nports = 2\n[[olt]]\nports = \"${ports}\"\n[[expect]]\nat = 1\n"
                           "view = \"base_info\"\nequals = 3\n");
    EXPECT_EQ(run({name, "--set", "ports=3"}), "1 run, 1 check: all hold\n");
    run({name});
    EXPECT_EQ(status, 1);
    EXPECT_THAT(run({name, "--set", "port=3"}), HasSubstr("there is no variable port; did you mean ports?"));
    EXPECT_EQ(status, 2);
    EXPECT_THAT(run({name, "--set", "ports"}), HasSubstr("expected NAME=VALUE"));
    EXPECT_EQ(status, 2);
    const std::string summary = Daemon({"--scenario", name, "--set", "ports=1", "--check"}).rest(status);
    EXPECT_EQ(status, 0) << summary;
    EXPECT_THAT(summary, testing::Not(HasSubstr("port 2")));
}

TEST_F(TestCommand, WritesAReport)
{
    run({file("bad.toml", bad), "--junit", folder.file("report.xml"), "--until", "5"});
    EXPECT_EQ(status, 1);
    std::ifstream in(folder.file("report.xml"));
    const std::string report{std::istreambuf_iterator<char>(in), {}};
    EXPECT_THAT(report, HasSubstr("<failure message=\"at 1s: expected base_info rows equals 1, found 2\">"));
    run({file("bad.toml", bad), "--junit", folder.file("no/report.xml")});
    EXPECT_EQ(status, 1);
}

TEST_F(TestCommand, LeavesNothingBehind)
{
    run({file("good.toml", good)});
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.file("")), {}), 1);
}

} // namespace
} // namespace ponsim
