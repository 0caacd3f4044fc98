// These tests run `ponsim ctl events` as a process, and follow what happens to alarms.
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "control.h"
#include "simulator.h"

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

// A Follower is a `ponsim ctl events` whose lines are read as they come.
class Follower
{
public:
    explicit Follower(const std::vector<std::string> &words)
    {
        int output[2];
        if (pipe(output)) throw std::runtime_error("pipe");
        pid = fork();
        if (pid == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            dup2(output[1], STDOUT_FILENO);
            close(output[0]);
            close(output[1]);
            std::vector<std::string> all{PONSIM, "ctl", "events"};
            all.insert(all.end(), words.begin(), words.end());
            std::vector<char *> arguments;
            for (std::string &word : all)
                arguments.push_back(word.data());
            arguments.push_back(nullptr);
            execv(PONSIM, arguments.data());
            _exit(127);
        }
        close(output[1]);
        lines = output[0];
    }
    ~Follower()
    {
        close(lines);
        kill(pid, SIGCONT);
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    Follower(const Follower &) = delete;

    // Returns the next line, or an empty text when none comes in ten seconds or the follower has ended.
    std::string line()
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        for (;;) {
            if (const size_t at = read_already.find('\n'); at != std::string::npos) {
                std::string found = read_already.substr(0, at);
                read_already.erase(0, at + 1);
                return found;
            }
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
            pollfd readable{lines, POLLIN, 0};
            if (left.count() <= 0 || poll(&readable, 1, static_cast<int>(left.count())) <= 0) return {};
            char buffer[4096];
            const ssize_t got = read(lines, buffer, sizeof buffer);
            if (got <= 0) return {};
            read_already.append(buffer, static_cast<size_t>(got));
        }
    }
    // Returns the first of the next lines that has the text, or an empty text.
    std::string line_with(const std::string &text)
    {
        for (int count = 0; count < 2000; ++count) {
            const std::string next = line();
            if (next.empty() || next.find(text) != std::string::npos) return next;
        }
        return {};
    }
    void signal(int number) const { kill(pid, number); }

private:
    pid_t pid = 0;
    int lines = -1;
    std::string read_already;
};

// Makes more events than the history has, with all feeders of 16 ports.
void make_many_events()
{
    for (int round = 0; round < 5; ++round) {
        for (int port = 1; port <= 16; ++port)
            control("cut " + std::to_string(port) + " feeder");
        control("step 1");
        for (int port = 1; port <= 16; ++port)
            control("mend " + std::to_string(port) + " feeder");
        control("step 60");
    }
}

class Events : public testing::Test
{
protected:
    Simulator simulator{{"--speed", "0", "--silent", "0"}};
};

TEST_F(Events, AreFollowedAsTheyHappen)
{
    Follower follower({"--follow"});
    control("cut 1 feeder");
    control("step 1");
    EXPECT_EQ(follower.line(),
              R"({"number":1,"at":50,"pon_port":1,"onu_id":null,"mac":null,"alarm":"port_los","severity":"critical",)"
              R"("state":"active","cause":"fibre","place":"feeder"})");
    for (int onu = 0; onu < 8; ++onu)
        EXPECT_THAT(follower.line(),
                    HasSubstr(R"("alarm":"los","severity":"critical","state":"active","cause":"port_los")"));
    control("mend 1 feeder");
    control("step 0");
    EXPECT_THAT(follower.line(), HasSubstr(R"("at":1000,"pon_port":1,"onu_id":null,"mac":null,"alarm":"port_los")"));
    follower.signal(SIGINT);
    EXPECT_EQ(follower.line(), "") << "it was interrupted";
}

TEST_F(Events, BeginBehindTheOneThatIsNamedAlsoAfterARestart)
{
    control("cut 1 feeder");
    control("step 1");
    simulator.kill();
    simulator.start();
    Follower follower({"--since", "8"});
    EXPECT_THAT(follower.line(), StartsWith(R"({"number":9,)"));
    EXPECT_EQ(follower.line(), "") << "it ends where the history does";
}

TEST_F(Events, ThatAFollowerIsTooSlowForAreSaidToBeMissed)
{
    control("cut 1 feeder");
    control("step 1");
    Follower follower({"--follow"});
    for (int number = 1; number <= 9; ++number)
        EXPECT_THAT(follower.line(), StartsWith("{\"number\":" + std::to_string(number) + ','));
    follower.signal(SIGSTOP);
    make_many_events(); // nothing waits for the follower
    follower.signal(SIGCONT);
    const std::string missed = follower.line_with("missed");
    uint64_t last = 0, count = 0;
    ASSERT_EQ(sscanf(missed.c_str(), R"({"number":%lu,"missed":%lu})", &last, &count), 2) << missed;
    EXPECT_EQ(last, 9 + count) << "the gap begins behind what was told";
    EXPECT_THAT(follower.line(), StartsWith("{\"number\":" + std::to_string(last + 1) + ','));
}

} // namespace
