// The services of these tests send their answers late, twice, or not at all, on purpose.
#include <atomic>

#include <gtest/gtest.h>

#include "support.h"

namespace
{

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "30000"}});

struct Kind {
    const char *kind;
    board_call call;
    decltype(&ipc_get_exec) get;
};

void PrintTo(const Kind &kind, std::ostream *out)
{
    *out << kind.kind;
}

std::string request_of(const Kind &kind, const std::string &token)
{
    board::RequestFrame frame{};
    frame.header = {.head = {.kind = board::Kind::request, .detail = static_cast<uint8_t>(kind.call)},
                    .module = test_module,
                    .msg_type = test_channel,
                    .sequence = 1,
                    .length = static_cast<uint32_t>(token.size()),
                    .allowed = 0};
    token.copy(reinterpret_cast<char *>(frame.data), token.size());
    return {reinterpret_cast<const char *>(&frame), frame.size()};
}

// Returns the token of the answer in a packet, or "" when the packet is no answer.
std::string token_of(const std::string &packet)
{
    return packet.size() < sizeof(board::AnswerHeader) ? "" : packet.substr(sizeof(board::AnswerHeader));
}

// The service's answers repeat the request's token, and the service treats an answer as its token says.
class Misbehaviour : public testing::TestWithParam<Kind>
{
protected:
    std::string echoed(const std::string &token)
    {
        std::string response(token.size(), '#');
        auto length = static_cast<uint32_t>(token.size());
        uint32_t status;
        value = GetParam().get(test_module, test_channel, token.data(), length, response.data(), &length, &status);
        return value == IPC_OK ? response.substr(0, length) : "";
    }
    void send(RawClient &client, const std::string &token) { ASSERT_TRUE(client.send(request_of(GetParam(), token))); }

    int32_t value = 0;
    std::atomic<uint32_t> handled = 0;
    TestService service{[this](const board_request &request, board_answer &answer) {
        ++handled;
        const std::string token(static_cast<const char *>(request.data), request.length);
        if (token == "never") board_answer_delay(&answer, UINT32_MAX);
        if (token == "late") board_answer_delay(&answer, 20);
        if (token == "later") board_answer_delay(&answer, 500);
        if (token == "lost") board_answer_drop(&answer);
        if (token == "twice") board_answer_repeat(&answer, 1);
        if (token == "often") board_answer_repeat(&answer, UINT32_MAX);
        echo()(request, answer);
    }};
};

TEST_P(Misbehaviour, of_a_late_answer_does_not_hold_up_other_clients)
{
    RawClient waiting(GetParam().kind);
    send(waiting, "never");
    EXPECT_EQ(echoed("another's"), "another's");
}

TEST_P(Misbehaviour, lets_a_late_answer_come_all_the_same)
{
    EXPECT_EQ(echoed("late"), "late");
    EXPECT_EQ(echoed("the next"), "the next");
}

TEST_P(Misbehaviour, lets_the_next_answer_be_in_time)
{
    RawClient client(GetParam().kind);
    send(client, "lost");
    send(client, "in time");
    EXPECT_EQ(token_of(client.next_packet()), "in time");
}

TEST_P(Misbehaviour, sends_an_answer_twice)
{
    RawClient client(GetParam().kind);
    send(client, "twice");
    send(client, "the next");
    EXPECT_EQ(token_of(client.next_packet()), "twice");
    EXPECT_EQ(token_of(client.next_packet()), "twice");
    EXPECT_EQ(token_of(client.next_packet()), "the next");
}

TEST_P(Misbehaviour, has_bounds)
{
    RawClient client(GetParam().kind);
    send(client, "often");
    send(client, "the next");
    for (uint32_t copy = 0; copy <= BOARD_REPEAT_MAX; ++copy)
        EXPECT_EQ(token_of(client.next_packet()), "often");
    EXPECT_EQ(token_of(client.next_packet()), "the next");
}

TEST_P(Misbehaviour, gives_no_repeated_answer_to_the_next_call)
{
    EXPECT_EQ(echoed("twice"), "twice");
    EXPECT_EQ(echoed("the next"), "");
    EXPECT_EQ(value, IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(echoed("the one after"), "the one after");
}

TEST_P(Misbehaviour, repeats_an_answer_that_brings_a_result)
{
    service.stop();
    TestService other([](const board_request &request, board_answer &answer) {
        EXPECT_EQ(board_answer_result(&answer, 7, "{}", 2), 0);
        board_answer_repeat(&answer, 1);
        echo()(request, answer);
    });
    EXPECT_EQ(echoed("first"), "first");
    EXPECT_EQ(echoed("second"), "");
    EXPECT_EQ(value, IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(echoed("third"), "third");
}

INSTANTIATE_TEST_SUITE_P(Connection, Misbehaviour, testing::Values(Kind{"seq", BOARD_CALL_GET, ipc_get_exec}));
INSTANTIATE_TEST_SUITE_P(Datagram, Misbehaviour,
                         testing::Values(Kind{"dgram", BOARD_CALL_DGRAM_GET, ipc_dgram_get_exec}));

class MisbehaviourOfDatagrams : public Misbehaviour
{
};

TEST_P(MisbehaviourOfDatagrams, sends_late_answers_when_each_is_due)
{
    RawClient client(GetParam().kind);
    send(client, "later");
    send(client, "late");
    EXPECT_EQ(token_of(client.next_packet()), "late");
    EXPECT_EQ(token_of(client.next_packet()), "later");
}

TEST_P(MisbehaviourOfDatagrams, keeps_only_so_many_late_answers)
{
    RawClient client(GetParam().kind);
    const std::string log = log_of([&] {
        for (uint32_t sent = 0; sent <= BOARD_DELAYED_MAX; ++sent)
            send(client, "never");
        EXPECT_EQ(token_of(client.next_packet()), "never");
    });
    EXPECT_NE(log.find("an answer is not late"), std::string::npos) << log;
}

INSTANTIATE_TEST_SUITE_P(Datagram, MisbehaviourOfDatagrams,
                         testing::Values(Kind{"dgram", BOARD_CALL_DGRAM_GET, ipc_dgram_get_exec}));

class MisbehaviourOnAConnection : public Misbehaviour
{
};

TEST_P(MisbehaviourOnAConnection, ends_with_the_service)
{
    RawClient waiting(GetParam().kind);
    send(waiting, "never");
    EXPECT_TRUE(eventually([this] { return handled == 1; }));
    service.stop();
    EXPECT_EQ(waiting.next_packet(), "");
}

TEST_P(MisbehaviourOnAConnection, waits_no_longer_than_the_client)
{
    const size_t before = open_descriptors();
    {
        RawClient client(GetParam().kind);
        send(client, "never");
        EXPECT_TRUE(eventually([&] { return open_descriptors() == before + 2; })) << "both ends are open";
    }
    EXPECT_TRUE(eventually([&] { return open_descriptors() == before; }));
}

INSTANTIATE_TEST_SUITE_P(Connection, MisbehaviourOnAConnection,
                         testing::Values(Kind{"seq", BOARD_CALL_GET, ipc_get_exec}));

} // namespace
