// These tests make set and get calls over both kinds of socket, with a service that works correctly.
#include <array>
#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "support.h"

namespace
{

const TestEnvironment environment;

struct Seen {
    board_request request{};
    std::string data;
};

TEST(Exchange, a_set_delivers_the_record_and_returns_the_status_word)
{
    Seen seen;
    TestService service([&](const board_request &request, board_answer &answer) {
        seen = {request, std::string(static_cast<const char *>(request.data), request.length)};
        board_answer_status(&answer, 0xc0ffee01);
    });
    uint32_t status = 7;
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "record", 6, &status), IPC_OK);
    EXPECT_EQ(status, 0xc0ffee01u);
    service.stop();
    EXPECT_EQ(seen.data, "record");
    EXPECT_EQ(seen.request.call, BOARD_CALL_SET);
    EXPECT_EQ(seen.request.msg_type, test_channel);
}

TEST(Exchange, the_service_sees_who_calls)
{
    for (const auto call : {ipc_set_exec, ipc_dgram_set_exec}) {
        Seen seen;
        TestService service([&](const board_request &request, board_answer &) { seen.request = request; });
        uint32_t status;
        EXPECT_EQ(call(test_module, test_channel, "", 1, &status), IPC_OK);
        service.stop();
        EXPECT_EQ(seen.request.pid, getpid());
        EXPECT_EQ(seen.request.uid, geteuid());
        EXPECT_EQ(seen.request.gid, getegid());
    }
}

using Get = int32_t (*)(uint32_t, uint32_t, const void *, uint32_t, void *, uint32_t *, uint32_t *);

class GetCall : public testing::TestWithParam<Get>
{
protected:
    const Get get = GetParam();
};

TEST_P(GetCall, delivers_at_most_the_stated_length_and_says_how_much)
{
    TestService service(echo(5));
    std::array<char, 8> response{'#', '#', '#', '#', '#', '#', '#', '#'};
    uint32_t length = 4, status = 0;
    EXPECT_EQ(get(test_module, test_channel, "abcdef", 6, response.data(), &length, &status), IPC_OK);
    EXPECT_EQ(std::string(response.data(), 8), "abcd####");
    EXPECT_EQ(length, 4u);
    EXPECT_EQ(status, 5u);
}

TEST_P(GetCall, leaves_what_a_short_answer_does_not_reach)
{
    TestService service(echo());
    std::array<char, 8> response{'#', '#', '#', '#', '#', '#', '#', '#'};
    uint32_t length = 8, status;
    EXPECT_EQ(get(test_module, test_channel, "abc", 3, response.data(), &length, &status), IPC_OK);
    EXPECT_EQ(std::string(response.data(), 8), "abc#####");
    EXPECT_EQ(length, 3u);
}

TEST_P(GetCall, may_have_its_response_in_the_requests_place)
{
    TestService service([](const board_request &request, board_answer &answer) {
        std::string data(static_cast<const char *>(request.data), request.length);
        board_answer_data(&answer, std::string(data.rbegin(), data.rend()).data(), request.length);
    });
    char record[] = "drawer";
    uint32_t length = 6, status;
    EXPECT_EQ(get(test_module, test_channel, record, 6, record, &length, &status), IPC_OK);
    EXPECT_STREQ(record, "reward");
}

TEST_P(GetCall, takes_a_length_of_0_for_the_channels_record)
{
    TestService service([](const board_request &, board_answer &answer) {
        const std::vector<char> longest(IPC_MAX_LENGTH, 'x');
        board_answer_data(&answer, longest.data(), IPC_MAX_LENGTH);
    });
    const std::pair<uint32_t, uint32_t> channels[] = {{232, 944},  {235, 4120}, {236, 1148}, {237, 1888},
                                                      {238, 1888}, {239, 1148}, {240, 1148}, {241, 1888},
                                                      {242, 1044}, {243, 1888}, {244, 1044}, {7, 0}};
    for (const auto &[channel, record_length] : channels) {
        std::vector<char> response(IPC_MAX_LENGTH, '#');
        uint32_t length = 0, status;
        EXPECT_EQ(get(test_module, channel, "?", 1, response.data(), &length, &status), IPC_OK);
        EXPECT_EQ(length, record_length) << "channel " << channel;
        EXPECT_EQ(std::string(response.data(), IPC_MAX_LENGTH).find('#'), record_length) << "channel " << channel;
    }
}

TEST_P(GetCall, carries_the_longest_request_and_answer)
{
    TestService service(echo());
    std::vector<char> request(IPC_MAX_LENGTH, 'r'), response(IPC_MAX_LENGTH, '#');
    request.front() = '<', request.back() = '>';
    uint32_t length = IPC_MAX_LENGTH, status;
    EXPECT_EQ(get(test_module, test_channel, request.data(), IPC_MAX_LENGTH, response.data(), &length, &status),
              IPC_OK);
    EXPECT_EQ(response, request);
}

TEST_P(GetCall, sends_nothing_that_is_longer)
{
    std::atomic<int> handled{0};
    TestService service([&](const board_request &, board_answer &) { ++handled; });
    const std::vector<char> request(IPC_MAX_LENGTH + 1);
    uint32_t length = 0, status = 7;
    EXPECT_EQ(get(test_module, test_channel, request.data(), IPC_MAX_LENGTH + 1, nullptr, &length, &status),
              IPC_ERR_TOO_LONG);
    EXPECT_EQ(handled, 0);
    EXPECT_EQ(status, 7u);
}

TEST_P(GetCall, tells_the_service_the_length_that_it_allows)
{
    std::atomic<uint32_t> allowed{0};
    TestService service([&](const board_request &request, board_answer &) { allowed = request.allowed; });
    char response[944];
    uint32_t length = 123, status;
    EXPECT_EQ(get(test_module, test_channel, "?", 1, response, &length, &status), IPC_OK);
    EXPECT_EQ(allowed, 123u);
    EXPECT_EQ(length, 0u);
}

INSTANTIATE_TEST_SUITE_P(Connection, GetCall, testing::Values(ipc_get_exec));
INSTANTIATE_TEST_SUITE_P(Datagram, GetCall, testing::Values(ipc_dgram_get_exec));

TEST(Exchange, eight_threads_get_their_own_answers)
{
    TestService service(echo());
    std::vector<std::thread> clients;
    std::atomic<int> mixed_up{0};
    for (uint32_t client = 0; client < 8; ++client) {
        clients.emplace_back([&, client] {
            for (uint32_t round = 0; round < 200; ++round) {
                const auto get = round % 2 ? ipc_get_exec : ipc_dgram_get_exec;
                const uint32_t token[2] = {client, round};
                uint32_t answer[2] = {}, length = sizeof answer, status;
                const int32_t value = get(test_module, test_channel, token, sizeof token, answer, &length, &status);
                if (value != IPC_OK || std::memcmp(token, answer, sizeof token)) ++mixed_up;
            }
        });
    }
    for (std::thread &client : clients)
        client.join();
    EXPECT_EQ(mixed_up, 0);
}

TEST(Exchange, handlers_run_one_at_a_time)
{
    std::atomic<int> inside{0}, together{0};
    TestService service([&](const board_request &, board_answer &) {
        if (++inside != 1) ++together;
        std::this_thread::yield();
        --inside;
    });
    std::vector<std::thread> clients;
    for (int client = 0; client < 4; ++client) {
        clients.emplace_back([client] {
            const auto set = client % 2 ? ipc_set_exec : ipc_dgram_set_exec;
            uint32_t status;
            for (int round = 0; round < 100; ++round)
                set(test_module, test_channel, "", 1, &status);
        });
    }
    for (std::thread &client : clients)
        client.join();
    EXPECT_EQ(together, 0);
}

TEST(Exchange, a_connection_is_kept_between_calls_and_closed_with_its_thread)
{
    TestService service(echo());
    size_t before = 0, after_one = 0, after_many = 0;
    std::thread([&] {
        uint32_t status;
        before = open_descriptors();
        ipc_set_exec(test_module, test_channel, "", 1, &status);
        after_one = open_descriptors();
        for (int round = 0; round < 100; ++round)
            ipc_set_exec(test_module, test_channel, "", 1, &status);
        after_many = open_descriptors();
    }).join();
    EXPECT_EQ(after_one, before + 2) << "the connection's two ends";
    EXPECT_EQ(after_many, after_one);
    EXPECT_TRUE(eventually([&] { return open_descriptors() == before; }));
}

} // namespace
