// The services of these tests let their clients wait.
#include <condition_variable>
#include <csignal>
#include <mutex>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include "support.h"

namespace
{

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "200"}});

// A Gate keeps handlers waiting while it is closed.
class Gate
{
public:
    void set(bool is_open)
    {
        const std::lock_guard lock(mutex);
        open = is_open;
        changed.notify_all();
    }
    void pass()
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return open; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool open = true;
};

class Timeout : public testing::TestWithParam<decltype(&ipc_get_exec)>
{
protected:
    // Returns the answer's token, or "" when the exchange failed.
    std::string echoed(const std::string &token)
    {
        std::string response(token.size(), '#');
        uint32_t length = static_cast<uint32_t>(token.size()), status;
        value = GetParam()(test_module, test_channel, token.data(), length, response.data(), &length, &status);
        return value == IPC_OK ? response.substr(0, length) : "";
    }

    // On a busy machine any answer may come too late, or be taken before its time is over.
    void expect_own_answer_or_none(const std::string &token)
    {
        const std::string answer = echoed(token);
        EXPECT_TRUE(answer == token || value == IPC_ERR_TIMEOUT) << answer << ", " << value;
    }

    int32_t value = 0;
    Gate gate;
    TestService service{[this](const board_request &request, board_answer &answer) {
        gate.pass();
        const std::string token(static_cast<const char *>(request.data), request.length);
        if (token == "lost") board_answer_drop(&answer);
        if (token == "late") board_answer_delay(&answer, 220);
        echo()(request, answer);
    }};
    ~Timeout() { gate.set(true); }
};

TEST_P(Timeout, ends_a_call_that_is_not_answered)
{
    gate.set(false);
    EXPECT_EQ(echoed("first"), "");
    EXPECT_EQ(value, IPC_ERR_TIMEOUT);
}

TEST_P(Timeout, of_a_thread_holds_in_place_of_that_of_the_environment)
{
    // The first answer opens the connection, with the time-out of the environment.
    EXPECT_EQ(echoed("first"), "first");
    EXPECT_EQ(board_ipc_use_thread_timeout(30000), 0u);
    EXPECT_EQ(echoed("late"), "late");
    EXPECT_EQ(board_ipc_use_thread_timeout(0), 30000u);
    EXPECT_EQ(echoed("lost"), "");
    EXPECT_EQ(value, IPC_ERR_TIMEOUT);
}

TEST_P(Timeout, leaves_no_late_answer_for_the_next_call)
{
    gate.set(false);
    EXPECT_EQ(echoed("first"), "");
    gate.set(true);
    for (int round = 0; round < 20; ++round)
        expect_own_answer_or_none("token" + std::to_string(round));
    EXPECT_TRUE(eventually([&] { return echoed("at last") == "at last"; }));
}

TEST_P(Timeout, is_what_a_dropped_answer_ends_in)
{
    EXPECT_EQ(echoed("lost"), "");
    EXPECT_EQ(value, IPC_ERR_TIMEOUT);
    EXPECT_TRUE(eventually([&] { return echoed("at last") == "at last"; }));
}

TEST_P(Timeout, leaves_no_delayed_answer_for_the_next_call)
{
    for (int round = 0; round < 3; ++round) {
        expect_own_answer_or_none("late");
        EXPECT_TRUE(eventually([&] { return echoed("next") == "next"; }));
    }
}

TEST_P(Timeout, holds_while_signals_keep_coming)
{
    struct sigaction ignore_with_a_handler {
    };
    ignore_with_a_handler.sa_handler = [](int) {};
    sigaction(SIGALRM, &ignore_with_a_handler, nullptr);
    gate.set(false);
    const itimerval often{{0, 20000}, {0, 20000}}, never{};
    setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_EQ(echoed("first"), "");
    setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_EQ(value, IPC_ERR_TIMEOUT);
}

INSTANTIATE_TEST_SUITE_P(Connection, Timeout, testing::Values(ipc_get_exec));
INSTANTIATE_TEST_SUITE_P(Datagram, Timeout, testing::Values(ipc_dgram_get_exec));

TEST(TimeoutOfAConnection, ends_a_call_to_a_service_that_accepts_nobody)
{
    const board::Descriptor listener(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socket_path("seq").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener.get(), reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    ASSERT_EQ(listen(listener.get(), 0), 0);
    uint32_t status;
    // The first call fills the queue of connections. The second call finds it full.
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_ERR_TIMEOUT);
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_ERR_TIMEOUT);
    unlink(address.sun_path);
}

} // namespace
