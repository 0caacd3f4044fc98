// These tests take a command to many OLTs without any OLT: which is next, what is kept, and what is reported.
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include "call/json.h"
#include "fleet/rollout/report.h"
#include "fleet/rollout/rollout.h"
#include "fleet/rollout/run_file.h"
#include "usage_error.h"

namespace
{

using namespace fleet;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

std::vector<std::string> olts(size_t count, const std::string &prefix = "olt-")
{
    std::vector<std::string> names;
    for (size_t number = 1; number <= count; ++number)
        names.push_back(prefix + std::to_string(number));
    return names;
}

RolloutOptions in_waves(std::string_view waves)
{
    RolloutOptions options;
    options.waves = read_waves(waves);
    return options;
}

std::vector<size_t> sizes_of(const Plan &plan)
{
    std::vector<size_t> sizes;
    for (const auto &wave : plan.waves)
        sizes.push_back(wave.size());
    return sizes;
}

TEST(Plan, HasWavesOfNumbersAndPercentages)
{
    EXPECT_THAT(sizes_of(plan_for(olts(1000), in_waves("1,5%,25%,rest"))), ElementsAre(1, 50, 250, 699));
    EXPECT_THAT(sizes_of(plan_for(olts(30), in_waves("1,5%,rest"))), ElementsAre(1, 2, 27)) << "5% of 30 are 1.5";
    EXPECT_THAT(sizes_of(plan_for(olts(3), in_waves("2,2,2,rest"))), ElementsAre(2, 1)) << "no wave is empty";
    EXPECT_THAT(sizes_of(plan_for(olts(3), {})), ElementsAre(3));
    EXPECT_THAT(sizes_of(plan_for(olts(3), in_waves("rest"))), ElementsAre(3));
}

TEST(Plan, KeepsTheOrderAndTheLimit)
{
    RolloutOptions options = in_waves("1,rest");
    options.limit = 3;
    EXPECT_THAT(plan_for(olts(9), options).waves, ElementsAre(ElementsAre("olt-1"), ElementsAre("olt-2", "olt-3")));
}

TEST(Plan, LetsNoOltFailInWaves)
{
    EXPECT_EQ(plan_for(olts(9), {}).most_failures, std::nullopt);
    EXPECT_EQ(plan_for(olts(9), in_waves("1,rest")).most_failures, 0);
    RolloutOptions options;
    options.max_failures = read_max_failures("5%");
    EXPECT_EQ(plan_for(olts(1000), options).most_failures, 50);
    EXPECT_EQ(plan_for(olts(19), options).most_failures, 0);
}

TEST(Plan, SaysWhatIsWrong)
{
    EXPECT_THAT(usage_error_of([] { read_concurrency("0"); }),
                StartsWith("--concurrency: expected a number from 1 to"));
    EXPECT_THAT(usage_error_of([] { read_limit("ten"); }), StartsWith("--limit: expected a number"));
    EXPECT_THAT(usage_error_of([] { read_waves("1,5%"); }), AllOf(StartsWith("--waves:"), HasSubstr("'rest'")));
    EXPECT_THAT(usage_error_of([] { read_waves("1,,rest"); }), HasSubstr("and not ''"));
    EXPECT_THAT(usage_error_of([] { read_waves("101%,rest"); }), HasSubstr("and not '101%'"));
    EXPECT_THAT(usage_error_of([] { read_waves("0,rest"); }), HasSubstr("and not '0'"));
    EXPECT_THAT(usage_error_of([] { read_waves("rest,rest"); }), HasSubstr("and not 'rest'"));
    EXPECT_THAT(usage_error_of([] { read_max_failures("few"); }), StartsWith("--max-failures: expected"));
    EXPECT_THAT(usage_error_of([] { read_max_failures("%"); }), HasSubstr("and not '%'"));
    EXPECT_THAT(usage_error_of([] { plan_for({}, {}); }), "there are no OLTs to go to");
    RolloutOptions options;
    options.check = "true";
    EXPECT_THAT(usage_error_of([&] { plan_for(olts(3), options); }), StartsWith("--check:"));
}

TEST(Rollout, RunsNoMoreAtOnceThanItMay)
{
    Plan plan = plan_for(olts(5), {});
    plan.concurrency = 2;
    Rollout rollout(plan);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-1", "olt-2"));
    EXPECT_THAT(rollout.next(), IsEmpty());
    rollout.ended("olt-2", State::done);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-3"));
    EXPECT_EQ(rollout.running(), 2u);
    EXPECT_EQ(rollout.waiting(), 2u);
    EXPECT_THROW(rollout.ended("olt-2", State::done), std::logic_error);
}

TEST(Rollout, IsOverWhenAllHaveEnded)
{
    Rollout rollout(plan_for(olts(2), {}));
    rollout.next();
    rollout.ended("olt-1", State::failed);
    EXPECT_FALSE(rollout.is_over());
    rollout.ended("olt-2", State::done);
    EXPECT_TRUE(rollout.is_over());
    EXPECT_EQ(rollout.stopped(), "");
    EXPECT_EQ(rollout.count(State::failed), 1u);
}

TEST(Rollout, BeginsAWaveWhenTheOneBeforeItIsOver)
{
    Rollout rollout(plan_for(olts(4), in_waves("2,rest")));
    EXPECT_THAT(rollout.next(), SizeIs(2));
    rollout.ended("olt-1", State::done);
    EXPECT_THAT(rollout.next(), IsEmpty());
    rollout.ended("olt-2", State::done);
    EXPECT_EQ(rollout.wave(), 1u);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-3", "olt-4"));
}

TEST(Rollout, StopsAtTheFirstFailureBeyondTheBound)
{
    RolloutOptions options = in_waves("3,rest");
    options.max_failures = Share{1};
    Rollout rollout(plan_for(olts(9), options));
    rollout.next();
    rollout.ended("olt-1", State::unreachable);
    EXPECT_EQ(rollout.stopped(), "");
    rollout.ended("olt-3", State::unknown);
    EXPECT_EQ(rollout.stopped(), "2 OLTs failed, and --max-failures permits 1");
    EXPECT_FALSE(rollout.is_over()) << "olt-2 still runs";
    EXPECT_THAT(rollout.next(), IsEmpty());
    rollout.ended("olt-2", State::done);
    EXPECT_TRUE(rollout.is_over());
    EXPECT_EQ(rollout.waiting(), 6u);
}

TEST(Rollout, WaitsForTheCheckOfAWave)
{
    RolloutOptions options = in_waves("1,1,rest");
    options.check = "true";
    Rollout rollout(plan_for(olts(3), options));
    EXPECT_THROW(rollout.checked(true), std::logic_error);
    rollout.next();
    rollout.ended("olt-1", State::done);
    EXPECT_EQ(rollout.check_due(), 0u);
    EXPECT_THAT(rollout.next(), IsEmpty());
    EXPECT_FALSE(rollout.is_over());
    rollout.checked(true);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-2"));
    rollout.ended("olt-2", State::done);
    EXPECT_EQ(rollout.check_due(), 1u);
    rollout.checked(false);
    EXPECT_EQ(rollout.stopped(), "the check after wave 2 failed");
    EXPECT_EQ(rollout.check_due(), std::nullopt);
    EXPECT_TRUE(rollout.is_over());
}

TEST(Rollout, ChecksNothingBehindTheLastWave)
{
    RolloutOptions options = in_waves("1,rest");
    options.check = "true";
    Rollout rollout(plan_for(olts(2), options));
    rollout.next();
    rollout.ended("olt-1", State::done);
    rollout.checked(true);
    rollout.next();
    rollout.ended("olt-2", State::done);
    EXPECT_EQ(rollout.check_due(), std::nullopt);
    EXPECT_TRUE(rollout.is_over());
}

TEST(Rollout, ThatIsResumedGoesWhereItHasNotCome)
{
    RolloutOptions options = in_waves("3,rest");
    options.check = "true";
    Progress progress;
    progress.ended = {{"olt-1", {State::done}}, {"olt-2", {State::failed, 1}}, {"olt-3", {State::unreachable}}};
    Rollout rollout(plan_for(olts(4), options), progress);
    EXPECT_EQ(rollout.count(State::failed), 1u);
    EXPECT_THAT(rollout.next(), ElementsAre("olt-3"));
    rollout.ended("olt-3", State::done);
    EXPECT_EQ(rollout.stopped(), "") << "the failure of before does not count";
    EXPECT_EQ(rollout.check_due(), 0u);

    progress.ended["olt-3"] = {State::done};
    progress.checked = 1;
    Rollout later(plan_for(olts(4), options), progress);
    EXPECT_THAT(later.next(), ElementsAre("olt-4"));
}

TEST(Rollout, StopsWhenItIsTold)
{
    Rollout rollout(plan_for(olts(3), {}));
    rollout.stop("interrupted");
    rollout.stop("again");
    EXPECT_EQ(rollout.stopped(), "interrupted");
    EXPECT_TRUE(rollout.is_over());
    EXPECT_THAT(rollout.next(), IsEmpty());
}

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
        run.options = in_waves("1,50%,rest");
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
