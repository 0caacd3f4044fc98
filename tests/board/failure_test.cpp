// These tests make exchanges that fail. Each kind of failure has its value and its text, and the caller's outputs do
// not change.
#include <atomic>
#include <cstring>
#include <set>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support.h"

namespace
{

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "30000"}});

struct Calls {
    const char *kind;
    decltype(&ipc_get_exec) get;
};

void PrintTo(const Calls &calls, std::ostream *out)
{
    *out << calls.kind;
}

class Failure : public testing::TestWithParam<Calls>
{
protected:
    // Returns the value of a get call. The call must leave its outputs alone when it fails.
    int32_t get() const
    {
        char response[4] = {'#', '#', '#', '#'};
        uint32_t length = 4, status = 7;
        const int32_t value = GetParam().get(test_module, test_channel, "?", 1, response, &length, &status);
        if (value != IPC_OK) {
            EXPECT_EQ(std::string(response, 4), "####");
            EXPECT_EQ(length, 4u);
            EXPECT_EQ(status, 7u);
        }
        return value;
    }
};

TEST_P(Failure, no_service_without_a_socket)
{
    EXPECT_EQ(get(), IPC_ERR_NO_SERVICE);
}

TEST_P(Failure, is_told_once_to_the_thread_that_met_it)
{
    board_ipc_take_thread_result();
    get();
    std::thread([] { EXPECT_EQ(board_ipc_take_thread_result(), IPC_OK); }).join();
    EXPECT_EQ(board_ipc_take_thread_result(), IPC_ERR_NO_SERVICE);
    EXPECT_EQ(board_ipc_take_thread_result(), IPC_OK);
}

TEST_P(Failure, is_forgotten_when_an_exchange_succeeds)
{
    get();
    TestService service([](const board_request &, board_answer &answer) { board_answer_status(&answer, 1001); });
    EXPECT_EQ(get(), IPC_OK);
    EXPECT_EQ(board_ipc_take_thread_result(), IPC_OK);
}

TEST(FailureOfASet, is_told_to_its_thread)
{
    uint32_t status = 0;
    board_ipc_take_thread_result();
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "?", 1, &status), IPC_ERR_NO_SERVICE);
    EXPECT_EQ(board_ipc_take_thread_result(), IPC_ERR_NO_SERVICE);
    EXPECT_EQ(ipc_dgram_set_exec(test_module, test_channel, "?", 1, &status), IPC_ERR_NO_SERVICE);
    EXPECT_EQ(board_ipc_take_thread_result(), IPC_ERR_NO_SERVICE);
}

TEST_P(Failure, no_service_behind_a_socket_that_a_dead_one_left)
{
    {
        RawService dies(GetParam().kind, [](const auto &) { return std::vector<RawService::Packet>(); });
    }
    EXPECT_EQ(access(socket_path(GetParam().kind).c_str(), F_OK), 0);
    EXPECT_EQ(get(), IPC_ERR_NO_SERVICE);
    unlink(socket_path(GetParam().kind).c_str());
}

TEST_P(Failure, access_when_the_sockets_mode_says_no)
{
    TestService service(echo());
    chmod(socket_path(GetParam().kind).c_str(), 0);
    const int exit_status = in_child([this] {
        if (geteuid() == 0 && setuid(65534)) return 1;
        return get() == IPC_ERR_ACCESS ? 0 : 2;
    });
    EXPECT_EQ(exit_status, 0);
}

TEST_P(Failure, refused_by_the_services_access_rules_and_the_log_says_why)
{
    std::atomic<int> handled{0};
    const std::string log = log_of([&] {
        TestService service([&](const board_request &, board_answer &) { ++handled; },
                            [](const board_request &) { return "reading is not for guests"; });
        EXPECT_EQ(get(), IPC_ERR_REFUSED);
        EXPECT_EQ(get(), IPC_ERR_REFUSED) << "the connection lives on";
    });
    EXPECT_EQ(handled, 0);
    EXPECT_NE(log.find("user " + std::to_string(geteuid()) + ": reading is not for guests"), std::string::npos) << log;
}

TEST_P(Failure, service_when_the_handler_says_so)
{
    TestService service([](const board_request &, board_answer &answer) {
        board_answer_data(&answer, "data", 4);
        board_answer_status(&answer, 3);
        board_answer_fail(&answer, IPC_ERR_SERVICE);
    });
    EXPECT_EQ(get(), IPC_ERR_SERVICE);
}

TEST_P(Failure, service_when_the_handler_throws)
{
    const std::string log = log_of([&] {
        TestService service([](const board_request &, board_answer &) { throw std::runtime_error("out of ONUs"); });
        EXPECT_EQ(get(), IPC_ERR_SERVICE);
    });
    EXPECT_NE(log.find("out of ONUs"), std::string::npos) << log;
}

TEST_P(Failure, incompatible_when_the_service_refuses_the_frame)
{
    for (const board::Refusal reason : {board::Refusal::other_version, board::Refusal::other_byte_order}) {
        RawService service(GetParam().kind, [&](const auto &) {
            const board::Head refusal{.kind = board::Kind::refusal, .detail = static_cast<uint8_t>(reason)};
            return std::vector<RawService::Packet>{{std::string(reinterpret_cast<const char *>(&refusal), 8)}};
        });
        EXPECT_EQ(get(), IPC_ERR_INCOMPATIBLE);
    }
    unlink(socket_path(GetParam().kind).c_str());
}

TEST_P(Failure, incompatible_when_the_answer_is_of_another_version_or_byte_order)
{
    for (const auto member : {&board::Head::version, &board::Head::byte_order}) {
        RawService service(GetParam().kind, [&](const board::RequestFrame &request) {
            board::AnswerFrame answer = answer_to(request);
            answer.header.head.*member ^= 3;
            return std::vector<RawService::Packet>{{bytes_of(answer)}};
        });
        EXPECT_EQ(get(), IPC_ERR_INCOMPATIBLE);
    }
    unlink(socket_path(GetParam().kind).c_str());
}

INSTANTIATE_TEST_SUITE_P(Connection, Failure, testing::Values(Calls{"seq", ipc_get_exec}));
INSTANTIATE_TEST_SUITE_P(Datagram, Failure, testing::Values(Calls{"dgram", ipc_dgram_get_exec}));

TEST(FailureOfAConnection, peer_lost_when_the_service_hangs_up_and_the_request_is_not_sent_again)
{
    std::atomic<int> requests{0};
    RawService service(
        "seq",
        [&](const auto &) {
            ++requests;
            return std::vector<RawService::Packet>();
        },
        true);
    uint32_t status;
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_ERR_PEER_LOST);
    EXPECT_EQ(requests, 1);
}

TEST(FailureOfAConnection, peer_lost_when_the_service_dies_while_it_handles_the_request)
{
    int pipe_ends[2];
    ASSERT_EQ(pipe(pipe_ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        TestService dies([](const board_request &, board_answer &) { _exit(0); });
        if (write(pipe_ends[1], "!", 1) == 1) pause();
        _exit(1);
    }
    char ready;
    ASSERT_EQ(read(pipe_ends[0], &ready, 1), 1);
    uint32_t status;
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_ERR_PEER_LOST);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_ERR_NO_SERVICE);
    close(pipe_ends[0]);
    close(pipe_ends[1]);
}

TEST(FailureOfAConnection, service_when_there_are_too_many_connections)
{
    TestService service(echo());
    std::vector<RawClient> others;
    uint32_t status;
    const std::string log = log_of([&] {
        for (int count = 0; count < 256; ++count)
            others.emplace_back("seq");
        std::thread([&] {
            EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_ERR_SERVICE);
        }).join();
    });
    EXPECT_NE(log.find("too many connections"), std::string::npos) << log;
    others.clear();
    EXPECT_TRUE(eventually([&] { return ipc_set_exec(test_module, test_channel, "", 1, &status) == IPC_OK; }));
}

TEST(FailureText, is_there_for_every_value_and_differs)
{
    std::set<std::string> texts;
    for (int32_t value = IPC_ERR_SERVICE; value <= IPC_OK; ++value)
        texts.insert(ipc_strerror(value));
    texts.insert(ipc_strerror(1001));
    EXPECT_EQ(texts.size(), 12u);
}

} // namespace
