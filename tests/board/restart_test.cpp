// In these tests a service is killed in the middle of its clients' calls and started again, and clients fork.
#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstring>

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support.h"

namespace
{

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "2000"}, {"BOARD_IPC_SPIN_US", "100"}});

// A ServiceProcess is a service of the test module in a process of its own. The constructor makes the process, because
// the test has no other threads then. The process serves when it receives the order.
class ServiceProcess
{
public:
    ServiceProcess()
    {
        if (pipe(go) || pipe(ready)) std::abort();
        pid = fork();
        if (pid) return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        char byte;
        if (read(go[0], &byte, 1) != 1) _exit(1);
        TestService service(echo(1));
        if (!service.is_running() || write(ready[1], "!", 1) != 1) _exit(1);
        for (;;)
            pause();
    }
    ~ServiceProcess()
    {
        kill_it();
        for (const int end : {go[0], go[1], ready[0], ready[1]})
            close(end);
    }

    bool serve()
    {
        char byte;
        return write(go[1], "!", 1) == 1 && read(ready[0], &byte, 1) == 1;
    }
    void kill_it()
    {
        if (pid <= 0) return;
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        pid = -1;
    }

private:
    pid_t pid = -1;
    int go[2], ready[2];
};

TEST(Restart, of_a_killed_service_mixes_up_no_answers_and_hangs_no_one)
{
    ServiceProcess first, second;
    ASSERT_TRUE(first.serve());

    struct Client {
        std::atomic<int> answered{0}, failed{0}, wrong{0};
    };
    std::atomic<bool> done{false};
    std::vector<Client> states(8);
    std::vector<std::thread> clients;
    for (uint32_t number = 0; number < states.size(); ++number) {
        clients.emplace_back([&, number] {
            Client &own = states[number];
            for (uint32_t round = 0; !done; ++round) {
                const auto get = number % 4 == 3 ? ipc_dgram_get_exec : ipc_get_exec;
                const uint32_t token[2] = {number, round};
                uint32_t answer[2] = {}, length = sizeof answer, status = 0;
                const int32_t value = get(test_module, test_channel, token, sizeof token, answer, &length, &status);
                if (value != IPC_OK)
                    ++own.failed;
                else if (status != 1 || length != sizeof token || std::memcmp(token, answer, sizeof token))
                    ++own.wrong;
                else
                    ++own.answered;
            }
        });
    }
    const auto each = [&](std::atomic<int> Client::*count, int at_least) {
        return eventually([&, at_least] {
            return std::all_of(states.begin(), states.end(),
                               [&](const Client &client) { return client.*count >= at_least; });
        });
    };
    EXPECT_TRUE(each(&Client::answered, 50));
    first.kill_it();
    EXPECT_TRUE(each(&Client::failed, 1));
    EXPECT_TRUE(second.serve());
    for (Client &client : states)
        client.answered = 0;
    EXPECT_TRUE(each(&Client::answered, 50));
    done = true;
    for (std::thread &client : clients)
        client.join();
    for (const Client &client : states)
        EXPECT_EQ(client.wrong, 0);
}

TEST(Restart, between_two_calls_goes_unnoticed)
{
    for (const auto set : {ipc_set_exec, ipc_dgram_set_exec}) {
        ServiceProcess first, second;
        uint32_t status = 0;
        ASSERT_TRUE(first.serve());
        EXPECT_EQ(set(test_module, test_channel, "", 1, &status), IPC_OK);
        first.kill_it();
        ASSERT_TRUE(second.serve());
        EXPECT_EQ(set(test_module, test_channel, "", 1, &status), IPC_OK);
    }
}

TEST(Fork, gives_the_child_a_connection_of_its_own)
{
    std::atomic<pid_t> caller{0};
    TestService service([&](const board_request &request, board_answer &answer) {
        caller = request.pid;
        echo()(request, answer);
    });
    const auto echoed = [](const char *token) {
        for (const auto get : {ipc_get_exec, ipc_dgram_get_exec}) {
            char response[7] = {};
            uint32_t length = 6, status;
            if (get(test_module, test_channel, token, 6, response, &length, &status) || std::strcmp(response, token))
                return false;
        }
        return true;
    };
    EXPECT_TRUE(echoed("before"));
    EXPECT_EQ(caller, getpid());
    EXPECT_EQ(in_child([&] { return echoed("inside") ? 0 : 1; }), 0);
    EXPECT_NE(caller, getpid()) << "the child called over the parent's connection";
    EXPECT_TRUE(echoed("after."));
    EXPECT_EQ(caller, getpid());
}

} // namespace
