// These tests keep what is known of a run, and read it again after whatever has happened to the file.
#include <filesystem>
#include <fstream>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fleet/rollout/run_file.h"
#include "olts.h"
#include "usage_error.h"

namespace
{

using namespace fleet;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Key;
using testing::SizeIs;
using testing::StartsWith;

class RunFiles : public testing::Test
{
protected:
    RunFiles()
    {
        char name[] = "/tmp/runs-XXXXXX";
        folder = mkdtemp(name);
    }
    ~RunFiles() override { std::filesystem::remove_all(folder); }

    static fleet::Run a_run()
    {
        fleet::Run run{.id = "r1",
                       .at = now,
                       .words = {"onu", "list", "it's"},
                       .selector = "site=north",
                       .options = {},
                       .plan = {}};
        run.options.waves = read_waves("1,50%,rest");
        run.options.max_failures = Share{5, true};
        run.options.limit = 5;
        run.options.check = "ping -c1 x";
        run.plan = plan_for(olts(9), run.options);
        return run;
    }

    std::string path() const { return folder / "r1.run"; }
    std::string content() const
    {
        std::ifstream stream(path());
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void set_content(const std::string &text) const { std::ofstream(path()) << text; }
    std::string error_of_resuming(uint64_t at = now, const std::string &id = "r1") const
    {
        return usage_error_of([&] { RunFile(folder, id, at); });
    }

    static constexpr uint64_t now = 1'700'000'000;
    std::filesystem::path folder;
};

TEST_F(RunFiles, AreForTheirUserOnly)
{
    RunFile file(folder, a_run());
    struct stat found;
    ASSERT_EQ(stat(path().c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0600u);
}

TEST_F(RunFiles, SayWhatWasDone)
{
    {
        RunFile file(folder, a_run());
        file.begun(olts(3));
        file.ended("olt-1", {State::done, 0, "fine\n", ""});
        file.ended("olt-2", {State::failed, 1, "", "ponctl: \"no\"\n"});
        file.checked(0, 0);
        file.checked(1, 3);
    }
    const RunFile resumed(folder, "r1", now + 60);
    EXPECT_EQ(resumed.run(), a_run());
    EXPECT_EQ(resumed.progress().ended, (Results{{"olt-1", {State::done, 0, "fine\n", ""}},
                                                 {"olt-2", {State::failed, 1, "", "ponctl: \"no\"\n"}}}));
    EXPECT_THAT(resumed.progress().begun, ElementsAre("olt-3"));
    EXPECT_EQ(resumed.progress().checked, 1u);
}

TEST_F(RunFiles, CanBeResumedMoreThanOnce)
{
    {
        RunFile file(folder, a_run());
        file.begun(olts(2));
        file.ended("olt-1", {State::unreachable, 3, "", "gone"});
        file.over("interrupted");
    }
    {
        RunFile file(folder, "r1", now + 1);
        file.begun(olts(1));
        file.ended("olt-1", {State::unreachable, 3, "", "gone"});
    }
    const RunFile file(folder, "r1", now + 2);
    EXPECT_THAT(file.progress().ended, ElementsAre(Key("olt-1")));
    EXPECT_THAT(file.progress().begun, ElementsAre("olt-2"));
}

TEST_F(RunFiles, KeepEqualOutcomesOnce)
{
    {
        RunFile file(folder, a_run());
        for (const std::string &olt : olts(5))
            file.ended(olt, {State::done, 0, "the same text", ""});
    }
    const std::string text = content();
    const size_t first = text.find("the same text");
    EXPECT_NE(first, text.npos);
    EXPECT_EQ(text.find("the same text", first + 1), text.npos);
    EXPECT_THAT(RunFile(folder, "r1", now).progress().ended, SizeIs(5));
}

TEST_F(RunFiles, KeepNoLongTexts)
{
    {
        RunFile file(folder, a_run());
        file.ended("olt-1", {State::done, 0, std::string(longest_kept + 1, 'x'), ""});
    }
    EXPECT_LT(content().size(), 2000u);
    EXPECT_EQ(RunFile(folder, "r1", now).progress().ended, (Results{{"olt-1", {State::done}}}));
}

// Whatever part of the last line was written when the machine stopped, what stands before it counts.
TEST_F(RunFiles, SurviveATornLine)
{
    {
        RunFile file(folder, a_run());
        file.begun(olts(2));
    }
    const std::string whole = content();
    {
        RunFile file(folder, "r1", now);
        file.ended("olt-1", {State::done, 0, "x", ""});
    }
    const std::string with_end = content();
    std::set<size_t> counts;
    for (size_t length = whole.size(); length <= with_end.size(); ++length) {
        set_content(with_end.substr(0, length));
        const RunFile file(folder, "r1", now);
        counts.insert(file.progress().ended.size());
        ASSERT_EQ(file.progress().begun.size() + file.progress().ended.size(), 2u) << length;
        ASSERT_EQ(file.progress().ended.size(), length == with_end.size() ? 1u : 0u) << length;
    }
    EXPECT_THAT(counts, ElementsAre(0, 1));
}

TEST_F(RunFiles, GoOnBehindATornLine)
{
    {
        RunFile file(folder, a_run());
        file.begun(olts(1));
    }
    set_content(content() + "{\"ended\":\"ol");
    RunFile(folder, "r1", now).ended("olt-1", {State::done});
    EXPECT_THAT(RunFile(folder, "r1", now).progress().ended, ElementsAre(Key("olt-1")));
}

TEST_F(RunFiles, SurviveAKill)
{
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        RunFile file(folder, a_run());
        file.begun(olts(2));
        file.ended("olt-2", {State::done});
        (void)!write(ready[1], "x", 1);
        pause();
        _exit(0);
    }
    char byte;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_THAT(error_of_resuming(), StartsWith("another process runs this run"));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
    const RunFile file(folder, "r1", now);
    EXPECT_THAT(file.progress().ended, ElementsAre(Key("olt-2")));
    EXPECT_THAT(file.progress().begun, ElementsAre("olt-1"));
}

TEST_F(RunFiles, ThatCannotBeResumedSayWhy)
{
    EXPECT_THAT(error_of_resuming(now, "r9"), StartsWith("there is no run 'r9'"));
    EXPECT_THAT(error_of_resuming(now, "../r1"), StartsWith("there is no run '../r1'"));
    RunFile(folder, a_run()).over("");
    EXPECT_THAT(error_of_resuming(now, "r11"), HasSubstr("did you mean r1?"));
    EXPECT_THAT(error_of_resuming(), HasSubstr("is over: there is nothing to resume"));
    std::filesystem::remove(path());
    {
        RunFile file(folder, a_run());
    }
    EXPECT_EQ(error_of_resuming(now + longest_run), "no error");
    EXPECT_THAT(error_of_resuming(now + longest_run + 1), HasSubstr("older than 30 days"));
}

TEST_F(RunFiles, ThatAreDamagedSayInWhichLine)
{
    {
        RunFile file(folder, a_run());
    }
    const std::string begin = content();
    for (const char *line :
         {"{", "7", "{\"begun\":[\"other\"]}", "{\"begun\":7}", "{\"ended\":\"olt-1\",\"outcome\":\"00\"}",
          "{\"ended\":\"x\"}", "{\"checked\":3,\"exit\":0}", "{\"checked\":-1}",
          "{\"outcome\":\"a\",\"state\":\"fine\"}", "{\"something\":1}"}) {
        set_content(begin + line + "\n");
        EXPECT_THAT(error_of_resuming(), HasSubstr("r1.run:2: ")) << line;
    }
    for (const char *start :
         {"{}", "nothing", R"({"run":"r1","at":1,"words":[],"selector":"","options":{"concurrency":1},"waves":[]})",
          R"({"run":"r1","at":1,"words":[],"selector":"","options":{"concurrency":0},"waves":[["a"]]})",
          R"({"run":"r1","at":1,"words":[],"selector":"","options":{"concurrency":1},"waves":[["a"],["a"]]})",
          R"({"run":"r1","at":1,"words":[],"selector":"","options":{"concurrency":1},"waves":[["a"],[]]})"}) {
        set_content(std::string(start) + "\n");
        EXPECT_THAT(error_of_resuming(), HasSubstr("r1.run:1: ")) << start;
    }
    set_content("");
    EXPECT_THAT(error_of_resuming(), HasSubstr("the file is empty"));
    fleet::Run other = a_run();
    other.id = "r2";
    {
        RunFile file(folder, other);
    }
    std::filesystem::rename(folder / "r2.run", path());
    EXPECT_THAT(error_of_resuming(), HasSubstr("its file is of the run 'r2'"));
}

TEST_F(RunFiles, FailWhereTheyCannotBeWritten)
{
    EXPECT_THROW(RunFile(folder / "missing", a_run()), std::runtime_error);
    const RunFile file(folder, a_run());
    EXPECT_THROW(RunFile(folder, a_run()), std::runtime_error) << "there is one already";
}

TEST_F(RunFiles, ThatNobodyCanResumeGo)
{
    {
        RunFile file(folder, a_run());
    }
    fleet::Run later = a_run();
    later.id = "r2";
    later.at = static_cast<uint64_t>(time(nullptr)) + longest_run - 3600;
    {
        RunFile file(folder, later);
    }
    EXPECT_THAT(runs_in(folder), ElementsAre("r2", "r1"));
    later.id = "r3";
    later.at += 7200;
    {
        RunFile file(folder, later);
    }
    EXPECT_THAT(runs_in(folder), ElementsAre("r3"));
}

TEST(RunId, IsANameOfItsDay)
{
    const std::string id = new_run_id(1'795'420'000);
    EXPECT_THAT(id, StartsWith("r20261123-"));
    EXPECT_THAT(id, SizeIs(18));
    EXPECT_NE(id, new_run_id(1'795'420'000));
}

} // namespace
