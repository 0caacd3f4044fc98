// The clients of these tests send packets that are no frames, or are not for this service. They are refused and logged,
// and the other clients are still served.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include "packet.h"
#include "support.h"

namespace
{

// Before Linux 6.16 no kernel refuses descriptors. The service has to stand peers on all kernels, so these tests
// pretend to run on an old one.
std::atomic<bool> kernel_refuses_descriptors{false};

} // namespace

extern "C" [[gnu::visibility("default")]] int setsockopt(int socket, int level, int option, const void *value,
                                                         socklen_t length) noexcept
{
    if (option == SO_PASSRIGHTS && !kernel_refuses_descriptors) {
        errno = ENOPROTOOPT;
        return -1;
    }
    return static_cast<int>(syscall(SYS_setsockopt, socket, level, option, value, length));
}

namespace
{

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "30000"}});

board::RequestFrame good_request(board_call call)
{
    board::RequestFrame request{};
    request.header.head = {.kind = board::Kind::request, .detail = static_cast<uint8_t>(call)};
    request.header.module = test_module;
    request.header.msg_type = test_channel;
    request.header.length = 4;
    return request;
}

std::string bytes_of(const board::RequestFrame &request)
{
    return {reinterpret_cast<const char *>(&request), request.size()};
}

size_t lines_in(const std::string &log)
{
    return static_cast<size_t>(std::count(log.begin(), log.end(), '\n'));
}

struct Kind {
    const char *kind;
    board_call call;
};

void PrintTo(const Kind &kind, std::ostream *out)
{
    *out << kind.kind;
}

class StrayClient : public testing::TestWithParam<Kind>
{
protected:
    // Sends `packet`, checks that it is refused for `reason` and logged, and that another client is served after it.
    void expect_refusal(const std::string &packet, board::Refusal reason, const char *in_log)
    {
        const std::string log = log_of([&] {
            std::atomic<int> handled{0};
            TestService service([&](const board_request &, board_answer &) { ++handled; });
            RawClient client(GetParam().kind);
            ASSERT_TRUE(client.send(packet));

            const board::Head refusal{.kind = board::Kind::refusal, .detail = static_cast<uint8_t>(reason)};
            EXPECT_EQ(client.next_packet(), std::string(reinterpret_cast<const char *>(&refusal), sizeof refusal));
            if (GetParam().call == BOARD_CALL_GET) {
                EXPECT_EQ(client.next_packet(), "") << "the service hangs up";
            }
            EXPECT_EQ(handled, 0);

            uint32_t status;
            EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
            EXPECT_EQ(ipc_dgram_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
        });
        EXPECT_EQ(lines_in(log), 1u) << log;
        EXPECT_NE(log.find(in_log), std::string::npos) << log;
        EXPECT_NE(log.find("process " + std::to_string(getpid())), std::string::npos) << log;
    }

    board::RequestFrame request = good_request(GetParam().call);
};

TEST_P(StrayClient, is_none_when_it_speaks_frames)
{
    TestService service(echo());
    RawClient client(GetParam().kind);
    client.send(bytes_of(request));
    EXPECT_EQ(client.next_packet().size(), sizeof(board::AnswerHeader) + 4);
}

TEST_P(StrayClient, sends_garbage)
{
    expect_refusal("GET / HTTP/1.1", board::Refusal::not_a_frame, "not a frame");
}

TEST_P(StrayClient, sends_half_a_head)
{
    expect_refusal(bytes_of(request).substr(0, 5), board::Refusal::not_a_frame, "not a frame");
}

TEST_P(StrayClient, sends_half_a_frame)
{
    expect_refusal(bytes_of(request).substr(0, 20), board::Refusal::wrong_length, "length is wrong");
    expect_refusal(bytes_of(request).substr(0, request.size() - 1), board::Refusal::wrong_length, "length is wrong");
}

TEST_P(StrayClient, states_a_length_that_is_not_the_packets)
{
    request.header.length = 0xfffffff0;
    const std::string packet(reinterpret_cast<const char *>(&request), sizeof request.header + 4);
    expect_refusal(packet, board::Refusal::wrong_length, "length is wrong");
}

TEST_P(StrayClient, speaks_another_version)
{
    ++request.header.head.version;
    expect_refusal(bytes_of(request), board::Refusal::other_version, "another version");
}

TEST_P(StrayClient, speaks_the_other_byte_order)
{
    request.header.head.byte_order ^= 3;
    expect_refusal(bytes_of(request), board::Refusal::other_byte_order, "other byte order");
}

TEST_P(StrayClient, means_another_module_or_socket)
{
    request.header.head.detail ^= 2;
    expect_refusal(bytes_of(request), board::Refusal::wrong_address, "another module or call");
    request = good_request(GetParam().call);
    ++request.header.module;
    expect_refusal(bytes_of(request), board::Refusal::wrong_address, "another module or call");
}

TEST_P(StrayClient, sends_an_answer)
{
    request.header.head.kind = board::Kind::answer;
    expect_refusal(bytes_of(request), board::Refusal::not_a_frame, "not a frame");
}

TEST_P(StrayClient, sends_the_largest_packet_that_the_kernel_takes)
{
    TestService service(echo());
    RawClient client(GetParam().kind);
    size_t size = 10u << 20;
    const int room = static_cast<int>(2 * size);
    setsockopt(client.socket.get(), SOL_SOCKET, SO_SNDBUF, &room, sizeof room);
    std::string packet(size, '\0');
    std::memcpy(packet.data(), &request, sizeof request.header);
    const std::string log = log_of([&] {
        while (!client.send(packet.data(), size))
            size /= 2;
        EXPECT_EQ(client.next_packet().size(), sizeof(board::Head));
    });
    EXPECT_GT(size, sizeof(board::RequestFrame));
    EXPECT_NE(log.find("length is wrong"), std::string::npos) << log;
    uint32_t status;
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
}

TEST_P(StrayClient, sends_nonsense_without_end_and_does_not_fill_the_log)
{
    const auto start = std::chrono::steady_clock::now();
    const std::string log = log_of([&] {
        TestService service(echo());
        for (int packet = 0; packet < 1000; ++packet) {
            RawClient client(GetParam().kind);
            client.send("nonsense");
            EXPECT_EQ(client.next_packet().size(), sizeof(board::Head));
        }
        uint32_t status;
        EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    });
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(std::chrono::steady_clock::now() - start).count();
    EXPECT_GE(lines_in(log), 1u);
    EXPECT_LE(lines_in(log), static_cast<size_t>(11 * (seconds + 1)));
}

INSTANTIATE_TEST_SUITE_P(Connection, StrayClient, testing::Values(Kind{"seq", BOARD_CALL_GET}));
INSTANTIATE_TEST_SUITE_P(Datagram, StrayClient, testing::Values(Kind{"dgram", BOARD_CALL_DGRAM_GET}));

TEST(StrayClientOfAConnection, that_never_reads_its_answers_holds_up_nobody)
{
    TestService service(echo());
    RawClient greedy("seq");
    board::RequestFrame request = good_request(BOARD_CALL_GET);
    request.header.length = IPC_MAX_LENGTH;
    const std::string log = log_of([&] {
        // The service gives up this client when the kernel takes no more bytes for it.
        EXPECT_TRUE(eventually([&] { return !greedy.send(&request, request.size(), false) && errno != EAGAIN; }));
        uint32_t status;
        EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    });
    EXPECT_NE(log.find("gave up a connection"), std::string::npos) << log;
}

TEST(StrayClientOfDatagrams, that_never_reads_its_answers_holds_up_nobody)
{
    TestService service(echo());
    RawClient greedy("dgram");
    board::RequestFrame request = good_request(BOARD_CALL_DGRAM_GET);
    request.header.length = IPC_MAX_LENGTH;
    const std::string log = log_of([&] {
        for (int packet = 0; packet < 1000; ++packet)
            greedy.send(bytes_of(request));
        uint32_t status;
        EXPECT_EQ(ipc_dgram_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    });
    EXPECT_NE(log.find("could not deliver an answer"), std::string::npos) << log;
}

TEST(StrayClientOfDatagrams, that_offers_no_way_to_answer_it_is_refused)
{
    std::atomic<int> handled{0};
    const std::string log = log_of([&] {
        TestService service([&](const board_request &, board_answer &) { ++handled; });
        RawClient client("dgram");
        const board::RequestFrame request = good_request(BOARD_CALL_DGRAM_SET);
        send(client.socket.get(), &request, request.size(), 0);
        uint32_t status;
        EXPECT_EQ(ipc_dgram_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    });
    EXPECT_EQ(handled, 1);
    EXPECT_NE(log.find("no socket for the answer"), std::string::npos) << log;
}

// Sends a request whose way back is this descriptor.
void send_with_way_back(int way_back)
{
    const RawClient client("dgram");
    const board::RequestFrame request = good_request(BOARD_CALL_DGRAM_SET);
    EXPECT_GT(board::send_packet(client.socket.get(), &request, request.size(), way_back), 0);
}

long threads()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), std::filesystem::directory_iterator());
}

TEST(StrayClientOfDatagrams, whose_way_back_is_no_socket_of_the_right_kind_is_refused)
{
    const long before = threads();
    std::atomic<int> handled{0};
    const std::string log = log_of([&] {
        TestService service([&](const board_request &, board_answer &) { ++handled; });
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const board::Descriptor reader(ends[0]), writer(ends[1]);
        const board::Descriptor stream(socket(AF_UNIX, SOCK_STREAM, 0)), tcp(socket(AF_INET, SOCK_STREAM, 0)),
            listener(socket(AF_UNIX, SOCK_SEQPACKET, 0));
        const sockaddr_un unnamed{AF_UNIX, {}};
        ASSERT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr *>(&unnamed), sizeof(sa_family_t)), 0);
        ASSERT_EQ(listen(listener.get(), 1), 0);
        for (const board::Descriptor *way_back : {&writer, &stream, &tcp, &listener})
            send_with_way_back(way_back->get());
        uint32_t status;
        EXPECT_EQ(ipc_dgram_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    });
    EXPECT_EQ(handled, 1);
    EXPECT_NE(log.find("no socket for the answer"), std::string::npos) << log;
    EXPECT_TRUE(eventually([&] { return threads() <= before; })) << "a thread waits for somebody who connects";
}

using Descriptors = std::vector<board::Descriptor>;

// Sends this packet with the descriptors of connections that linger, and keeps none of them.
void send_with_lingering(const RawClient &client, const std::string &packet, Descriptors &other_ends, size_t count)
{
    Descriptors passed;
    for (size_t each = 0; each < count; ++each)
        passed.push_back(lingering_connection(other_ends.emplace_back()));
    EXPECT_TRUE(send_with(client.socket, packet.data(), packet.size(), passed)) << std::strerror(errno);
}

void expect_service()
{
    uint32_t status;
    EXPECT_EQ(ipc_dgram_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    EXPECT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
}

// Each of these tests hangs when a thread of the service waits for a descriptor that a peer passed. The end of the
// scope of the service is a part of the test.
TEST_P(StrayClient, that_passes_what_takes_an_hour_to_close_holds_up_nobody)
{
    Descriptors other_ends;
    {
        TestService service(echo());
        RawClient client(GetParam().kind);
        for (const size_t count : {1, 2, 3, 20})
            send_with_lingering(client, bytes_of(request), other_ends, count);
        expect_service();
        if (client.socket && GetParam().call == BOARD_CALL_GET) {
            EXPECT_EQ(client.next_packet().size(), sizeof(board::AnswerHeader) + 4) << "it is served like others";
        }
    }
    other_ends.clear();
}

TEST_P(StrayClient, that_passes_it_in_the_queue_of_a_socket_holds_up_nobody)
{
    Descriptors other_ends;
    {
        TestService service(echo());
        RawClient client(GetParam().kind);
        for (int count = 0; count < 3; ++count) {
            int ends[2];
            ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends), 0);
            const board::Descriptor near_end(ends[0]);
            Descriptors far_end, lingering;
            far_end.emplace_back(ends[1]);
            lingering.push_back(lingering_connection(other_ends.emplace_back()));
            EXPECT_EQ(send(near_end.get(), "", 0, 0), 0);
            EXPECT_TRUE(send_with(near_end, "x", 1, lingering));
            const std::string packet = bytes_of(request);
            EXPECT_TRUE(send_with(client.socket, packet.data(), packet.size(), far_end));
        }
        expect_service();
    }
    other_ends.clear();
}

TEST_P(StrayClient, that_passes_it_in_a_packet_which_nobody_receives_holds_up_nobody)
{
    Descriptors other_ends;
    {
        std::atomic<bool> go_on{false}, handling{false};
        TestService service([&](const board_request &, board_answer &) {
            handling = true;
            while (!go_on)
                usleep(1000);
        });
        RawClient client(GetParam().kind), waiting("seq");
        EXPECT_TRUE(client.send(bytes_of(request)));
        EXPECT_TRUE(eventually([&] { return handling.load(); }));
        // The first is behind a request that is handled, or not; the second may be on a connection that nobody accepts.
        send_with_lingering(client, "nonsense", other_ends, 3);
        send_with_lingering(client, bytes_of(request), other_ends, 3);
        send_with_lingering(waiting, "nonsense", other_ends, 3);
        std::thread stopping([&] { service.stop(); });
        usleep(20000);
        go_on = true;
        stopping.join();
    }
    other_ends.clear();
}

TEST(StrayClientOfAConnection, that_passes_descriptors_cannot_send_them_where_the_kernel_refuses_them)
{
    const board::Descriptor any(socket(AF_UNIX, SOCK_SEQPACKET, 0));
    const int off = 0;
    kernel_refuses_descriptors = true;
    const bool possible = !setsockopt(any.get(), SOL_SOCKET, SO_PASSRIGHTS, &off, sizeof off);
    {
        TestService service(echo());
        kernel_refuses_descriptors = false;
        if (!possible) GTEST_SKIP() << "this kernel passes all descriptors on";
        RawClient client("seq");
        Descriptors passed;
        passed.emplace_back(dup(0));
        const std::string packet = bytes_of(good_request(BOARD_CALL_GET));
        EXPECT_FALSE(send_with(client.socket, packet.data(), packet.size(), passed));
        EXPECT_EQ(errno, EPERM);
        EXPECT_TRUE(client.send(packet));
        EXPECT_EQ(client.next_packet().size(), sizeof(board::AnswerHeader) + 4) << "it is served like others";
        expect_service();
    }
}

// Closes these without waiting for the other ends.
void give_up(Descriptors lingering)
{
    const linger none{};
    for (const board::Descriptor &each : lingering)
        setsockopt(each.get(), SOL_SOCKET, SO_LINGER, &none, sizeof none);
}

TEST(StrayClientOfAConnection, that_is_refused_and_passes_it_holds_up_nobody)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can be several users";
    ASSERT_EQ(chmod(board_ipc_directory(), 0755), 0);
    Descriptors other_ends;
    const std::string log = log_of([&] {
        TestService service(echo());
        ASSERT_EQ(chmod(socket_path("seq").c_str(), 0666), 0);
        std::vector<RawClient> clients;
        constexpr uid_t somebody = 65534;
        for (int count = 0; count < 64; ++count)
            as_user(somebody, [&] { clients.emplace_back("seq"); });
        expect_service();
        const std::string packet = bytes_of(good_request(BOARD_CALL_GET));
        // The packet has to be there before the service refuses the connection, which takes a few attempts at most.
        bool sent = false;
        for (int attempt = 0; attempt < 1000 && !sent; ++attempt) {
            Descriptors passed;
            for (int count = 0; count < 3; ++count)
                passed.push_back(lingering_connection(other_ends.emplace_back()));
            as_user(somebody, [&] {
                clients.emplace_back("seq");
                sent = send_with(clients.back().socket, packet.data(), packet.size(), passed);
            });
            if (!sent) give_up(std::move(passed));
        }
        ASSERT_TRUE(sent);
        EXPECT_EQ(clients.back().next_packet().size(), sizeof(board::Head));
        expect_service();
    });
    EXPECT_NE(log.find("refused a connection"), std::string::npos) << log;
    other_ends.clear();
}

TEST(StrayClientOfAConnection, that_fills_the_log_leaves_room_for_complaints_about_others)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can be several users";
    ASSERT_EQ(chmod(board_ipc_directory(), 0755), 0);
    const auto complain = [](uid_t user, int times) {
        as_user(user, [&] {
            for (int count = 0; count < times; ++count) {
                RawClient client("seq");
                client.send("nonsense");
                client.next_packet();
            }
        });
    };
    const std::string log = log_of([&] {
        TestService service(echo());
        ASSERT_EQ(chmod(socket_path("seq").c_str(), 0666), 0);
        complain(65534, 1);
        complain(65533, 100);
        complain(65534, 1);
    });
    size_t lines = 0;
    for (size_t at = 0; (at = log.find("user 65534", at)) != std::string::npos; ++at)
        ++lines;
    EXPECT_EQ(lines, 2u) << log;
}

} // namespace
