#include "audit/bounded_log.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using audit::BoundedLog;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

struct LogFolder : testing::Test {
    void SetUp() override
    {
        folder = testing::TempDir() + "audit-XXXXXX";
        ASSERT_TRUE(mkdtemp(folder.data()));
        name = folder + "/log";
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    static std::string content(const std::string &file)
    {
        std::ostringstream text;
        text << std::ifstream(file).rdbuf();
        return text.str();
    }
    std::unique_ptr<BoundedLog> open(uint64_t limit = 1000)
    {
        return std::make_unique<BoundedLog>(name, limit,
                                            [this](const std::string &complaint) { complaints.push_back(complaint); });
    }
    mode_t mode() const
    {
        struct stat found;
        return stat(name.c_str(), &found) ? 0 : found.st_mode & 07777;
    }
    std::string refusal()
    {
        try {
            open();
        } catch (const std::runtime_error &error) {
            return error.what();
        }
        return "it was taken";
    }

    std::string folder;
    std::string name;
    std::vector<std::string> complaints;
};

// As long as it lives, files do not get longer than this, as when a disk is full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
    {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit full{size, before.rlim_max};
        handler = signal(SIGXFSZ, SIG_IGN);
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        signal(SIGXFSZ, handler);
    }

private:
    rlimit before;
    void (*handler)(int);
};

TEST_F(LogFolder, KeepsLinesForItsUserAlone)
{
    const mode_t open_to_all = umask(0);
    {
        const auto log = open();
        log->append("one");
        log->append("two");
    }
    umask(open_to_all);
    open()->append("three");
    EXPECT_EQ(content(name), "one\ntwo\nthree\n");
    EXPECT_EQ(mode(), 0600u);
    EXPECT_THAT(complaints, ElementsAre());
}

TEST_F(LogFolder, TakesThePermissionsOfOthersFromAFileThatIsThere)
{
    std::ofstream(name) << "old\n";
    chmod(name.c_str(), 0644);
    open()->append("new");
    EXPECT_EQ(mode(), 0600u);
    EXPECT_EQ(content(name), "old\nnew\n");
}

TEST_F(LogFolder, IsNeverLongerThanItMayBe)
{
    const auto log = open(64);
    for (int number = 0; number < 100; ++number)
        log->append("line " + std::to_string(number));
    EXPECT_LE(std::filesystem::file_size(name), 64u);
    EXPECT_LE(std::filesystem::file_size(name + ".1"), 64u);
    const std::string kept = content(name + ".1") + content(name);
    EXPECT_THAT(kept, testing::EndsWith("line 97\nline 98\nline 99\n"));
    EXPECT_THAT(complaints, ElementsAre());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2);
}

TEST_F(LogFolder, SaysWhatWasLostWhileThereWasNoRoom)
{
    const auto log = open();
    log->append("before");
    {
        const FullDisk full(10);
        for (int count = 0; count < 3; ++count)
            log->append("lost because there is no room");
        EXPECT_EQ(content(name), "before\n") << "half a line is left";
    }
    log->append("after");
    log->append("last");
    EXPECT_THAT(content(name), MatchesRegex("before\n[{]\"time\":\"[^\"]*\",\"lost\":3[}]\nafter\nlast\n"));
    EXPECT_THAT(complaints, ElementsAre(HasSubstr(name), HasSubstr("3 of its lines are lost")));
}

TEST_F(LogFolder, FollowsItsNameWhenTheFileIsMoved)
{
    const auto log = open();
    log->append("one");
    std::filesystem::rename(name, folder + "/moved");
    log->append("two");
    EXPECT_EQ(content(folder + "/moved"), "one\n");
    EXPECT_EQ(content(name), "two\n");
}

TEST_F(LogFolder, EndsALineThatWasCut)
{
    std::ofstream(name) << "whole\ncut";
    open()->append("next");
    EXPECT_EQ(content(name), "whole\ncut\nnext\n");
}

TEST_F(LogFolder, RefusesWhatIsNotItsFile)
{
    {
        const auto log = open();
        EXPECT_THAT(refusal(), HasSubstr("another process keeps it"));
    }
    std::filesystem::rename(name, folder + "/other");
    std::filesystem::create_symlink("other", name);
    EXPECT_THAT(refusal(), HasSubstr("symbolic link"));
    std::filesystem::remove(name);
    std::filesystem::create_hard_link(folder + "/other", name);
    EXPECT_THAT(refusal(), HasSubstr("not a plain file with one name"));
    std::filesystem::remove(name);
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    EXPECT_THAT(refusal(), HasSubstr("not a plain file"));
    std::filesystem::remove(name);
    EXPECT_THAT(content(folder + "/other"), "");
}

TEST_F(LogFolder, TakesLinesOfSeveralThreadsOneByOne)
{
    constexpr int threads = 4, lines = 50;
    {
        const auto log = open(1u << 20);
        std::vector<std::jthread> writers;
        for (int thread = 0; thread < threads; ++thread)
            writers.emplace_back([&log, thread] {
                for (int line = 0; line < lines; ++line)
                    log->append(std::string(40, static_cast<char>('a' + thread)));
            });
    }
    std::istringstream text(content(name));
    int count = 0;
    for (std::string line; std::getline(text, line); ++count)
        EXPECT_EQ(line, std::string(40, line.at(0)));
    EXPECT_EQ(count, threads * lines);
}

} // namespace
