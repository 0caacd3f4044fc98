// What a journal knows after a restart, a kill, a loss of power, and beside other processes.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "fleet/journal/journal.h"

namespace
{

using namespace fleet;
using testing::HasSubstr;

constexpr char answer[] = R"({"outcome":{"status":0}})";

class Kept : public testing::Test
{
protected:
    Kept() { file = (std::filesystem::path(mkdtemp(folder.data())) / "journal").string(); }
    ~Kept() override { std::filesystem::remove_all(folder); }

    static Journal::Turn turn_of(Journal &journal)
    {
        std::optional<Journal::Turn> turn = journal.take(Journal::Clock::now());
        if (!turn) throw std::runtime_error("others have the journal");
        return std::move(*turn);
    }
    // Returns what another process would find.
    std::optional<Journal::Entry> found(const std::string &id) const
    {
        Journal journal(file);
        return turn_of(journal).find(id);
    }
    std::string content() const
    {
        std::ifstream in(file);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::string folder = "/tmp/journal_test_XXXXXX";
    std::string file;
};

TEST_F(Kept, KnowsWhatBeganAndHowItEnded)
{
    Journal journal(file);
    {
        Journal::Turn turn = turn_of(journal);
        EXPECT_FALSE(turn.find("a"));
        turn.begin("a", "digest of a");
        turn.begin("b", "digest of b");
        turn.end("a", answer);
        EXPECT_EQ(turn.find("a")->answer, answer);
    }
    const auto a = found("a"), b = found("b");
    ASSERT_TRUE(a && b);
    EXPECT_EQ(a->digest, "digest of a");
    EXPECT_TRUE(a->ended);
    EXPECT_EQ(a->answer, answer);
    EXPECT_EQ(b->digest, "digest of b");
    EXPECT_FALSE(b->ended);
}

TEST_F(Kept, TakesIdsWithQuotesForWhatTheyAre)
{
    const std::string id = R"(x","answer":{"\)";
    Journal journal(file);
    Journal::Turn turn = turn_of(journal);
    turn.begin(id, "d");
    turn.end(id, answer);
    EXPECT_EQ(turn.find(id)->answer, answer);
    EXPECT_EQ(journal.take_damaged(), 0u);
}

TEST_F(Kept, ForgetsWhatWasNotDone)
{
    Journal journal(file);
    Journal::Turn turn = turn_of(journal);
    turn.begin("a", "d");
    turn.undo("a");
    EXPECT_FALSE(turn.find("a"));
    turn.begin("a", "d");
    EXPECT_TRUE(turn.find("a"));
}

TEST_F(Kept, KeepsNoAnswerThatIsTooLong)
{
    Journal journal(file);
    Journal::Turn turn = turn_of(journal);
    turn.begin("a", "d");
    turn.end("a", '"' + std::string(Journal::longest_answer, 'x') + '"');
    EXPECT_TRUE(turn.find("a")->ended);
    EXPECT_EQ(turn.find("a")->answer, "");
}

TEST_F(Kept, KnowsWhatWasBegunByAProcessThatWasKilled)
{
    const pid_t child = fork();
    if (child == 0) {
        Journal journal(file);
        Journal::Turn turn = turn_of(journal);
        turn.begin("a", "d");
        std::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_TRUE(found("a"));
    EXPECT_FALSE(found("a")->ended);
}

TEST_F(Kept, PassesOverALastLineThatALossOfPowerCut)
{
    std::string whole;
    {
        Journal journal(file);
        Journal::Turn turn = turn_of(journal);
        turn.begin("a", "d");
        turn.end("a", answer);
        turn.begin("b", "d");
        whole = content();
        turn.end("b", answer);
    }
    const size_t all = content().size();
    for (size_t length = whole.size(); length < all; ++length) {
        std::filesystem::resize_file(file, length);
        Journal journal(file);
        Journal::Turn turn = turn_of(journal);
        EXPECT_TRUE(turn.find("a")->ended);
        ASSERT_TRUE(turn.find("b"));
        EXPECT_FALSE(turn.find("b")->ended) << length;
        EXPECT_EQ(journal.take_damaged(), 0u);
        turn.end("b", answer);
        EXPECT_EQ(content().size(), all) << "the next line stands alone";
    }
    EXPECT_TRUE(found("b")->ended);
}

TEST_F(Kept, CountsLinesThatSomethingHasChanged)
{
    {
        Journal journal(file);
        Journal::Turn turn = turn_of(journal);
        turn.begin("a", "d");
    }
    std::ofstream(file, std::ios::app) << "{\"begun\":\"b\",\n{\"begun\":[]}\n{\"other\":\"x\"}\n";
    Journal journal(file);
    Journal::Turn turn = turn_of(journal);
    EXPECT_TRUE(turn.find("a"));
    EXPECT_FALSE(turn.find("b"));
    EXPECT_EQ(journal.take_damaged(), 3u);
}

TEST_F(Kept, BeginsAnewAndForgetsOnlyWhatIsOlderThanTheFileBefore)
{
    Journal journal(file, 100);
    {
        Journal::Turn turn = turn_of(journal);
        for (const char *id : {"a", "b", "c", "d", "e", "f"}) {
            turn.begin(id, "digest of it");
            turn.end(id, answer);
        }
        EXPECT_FALSE(turn.find("a"));
        for (const char *id : {"c", "d", "e", "f"})
            EXPECT_EQ(turn.find(id)->answer, answer) << id;
    }
    EXPECT_TRUE(std::filesystem::exists(file + ".1"));
    EXPECT_EQ(found("c")->answer, answer);
    EXPECT_LT(content().size(), 500u);
}

TEST_F(Kept, IsSharedByProcesses)
{
    Journal one(file), other(file);
    {
        Journal::Turn turn = turn_of(one);
        EXPECT_FALSE(other.take(Journal::Clock::now())) << "one has it";
        turn.begin("a", "d");
    }
    {
        Journal::Turn turn = turn_of(other);
        ASSERT_TRUE(turn.find("a"));
        turn.end("a", answer);
        turn.begin("b", "d");
    }
    Journal::Turn turn = turn_of(one);
    EXPECT_EQ(turn.find("a")->answer, answer);
    EXPECT_TRUE(turn.find("b"));
}

TEST_F(Kept, FollowsAFileThatAnotherProcessBeganAnew)
{
    Journal one(file, 10), other(file, 10);
    turn_of(one).begin("a", "d");
    turn_of(other).begin("b", "d");
    turn_of(one).begin("c", "d");
    Journal::Turn turn = turn_of(other);
    EXPECT_FALSE(turn.find("a"));
    EXPECT_TRUE(turn.find("b"));
    EXPECT_TRUE(turn.find("c"));
}

TEST_F(Kept, IsForItsUserOnlyAndNoOtherKindOfFile)
{
    Journal journal(file);
    turn_of(journal);
    struct stat state;
    ASSERT_EQ(stat(file.c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 0777, 0600u);
    const std::string link = folder + "/link";
    std::filesystem::create_symlink(file, link);
    for (const std::string &name : {link, folder, folder + "/nowhere/journal"}) {
        Journal wrong(name);
        EXPECT_THROW(wrong.take(Journal::Clock::now()), std::runtime_error) << name;
    }
}

TEST_F(Kept, WritesNothingOfALineForWhichThereIsNoRoom)
{
    Journal journal(file);
    {
        Journal::Turn turn = turn_of(journal);
        turn.begin("a", "d");
    }
    const std::string before = content();
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit most{before.size() + 5, before.size() + 5};
        setrlimit(RLIMIT_FSIZE, &most);
        Journal full(file);
        Journal::Turn turn = turn_of(full);
        try {
            turn.begin("b", "d");
        } catch (const std::runtime_error &error) {
            _exit(std::string(error.what()).find("the journal " + file) == 0 && !turn.find("b") ? 0 : 2);
        }
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(content(), before);
}

} // namespace
