// The services of these tests send wrong answers. The client accepts none of them, and suffers no harm.
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include "board/datastore.h"
#include "support.h"

namespace
{

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "30000"}});

using Packets = std::vector<RawService::Packet>;

constexpr uint32_t key = 352;
constexpr off_t memory_header = 64;
constexpr int all_seals = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL | F_SEAL_WRITE;

// Returns memory as a correct service passes it, with the bytes `{}` as a result of generation 1. Only its size and its
// seals may be wrong.
board::Descriptor memory_for_a_result(off_t size, int seals)
{
    board::Descriptor memory(memfd_create("hostile", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    const uint32_t generation = 1;
    EXPECT_EQ(ftruncate(memory.get(), size), 0);
    if (size >= memory_header + 2) {
        EXPECT_EQ(pwrite(memory.get(), &generation, sizeof generation, 0), 4);
        EXPECT_EQ(pwrite(memory.get(), "{}", 2, memory_header), 2);
    }
    EXPECT_EQ(fcntl(memory.get(), F_ADD_SEALS, seals), 0);
    return memory;
}

// Returns a result at this offset of memory that the next packet passes.
board::Result result_at(uint32_t offset, uint32_t length, uint32_t generation = 1)
{
    return {board::Result::shared, 1, key, offset, length, generation};
}

const board::Result good_result = result_at(memory_header, 2);

std::string head_of(board::Kind kind)
{
    const board::Head head{.kind = kind, .detail = 0};
    return {reinterpret_cast<const char *>(&head), sizeof head};
}

struct Kind {
    const char *kind;
    decltype(&ipc_get_exec) get;
};

void PrintTo(const Kind &kind, std::ostream *out)
{
    *out << kind.kind;
}

class HostileService : public testing::TestWithParam<Kind>
{
protected:
    ~HostileService() { unlink(socket_path(GetParam().kind).c_str()); }

    // Returns the value of a call that receives such answers.
    int32_t value_of(const RawService::Answers &answers) const
    {
        RawService service(GetParam().kind, answers);
        return call();
    }
    int32_t value_of_altered(const std::function<void(board::AnswerFrame &)> &alter) const
    {
        return value_of([&](const board::RequestFrame &request) {
            board::AnswerFrame answer = answer_to(request);
            alter(answer);
            return Packets{{std::string(reinterpret_cast<const char *>(&answer), sizeof answer.header + 3)}};
        });
    }
    // Returns the value of a call that receives an answer with a result, and the packets behind it.
    int32_t value_of_result(const board::Result &result, const Packets &behind) const
    {
        return value_of([&](const board::RequestFrame &request) {
            board::AnswerFrame answer = answer_to(request);
            answer.header.result = result;
            Packets packets{{bytes_of(answer)}};
            packets.insert(packets.end(), behind.begin(), behind.end());
            return packets;
        });
    }
    int32_t value_of_memory(const board::Descriptor &memory, const board::Result &result = good_result) const
    {
        return value_of_result(result, {{head_of(board::Kind::memory), memory.get()}});
    }
    int32_t call() const
    {
        char response[3];
        uint32_t length = 3, status;
        return GetParam().get(test_module, test_channel, "abc", 3, response, &length, &status);
    }
};

TEST_P(HostileService, is_believed_when_it_is_none)
{
    EXPECT_EQ(value_of_altered([](board::AnswerFrame &) {}), IPC_OK);
    EXPECT_EQ(value_of_memory(memory_for_a_result(memory_header + 2, all_seals)), IPC_OK);
}

TEST_P(HostileService, answers_garbage)
{
    EXPECT_EQ(value_of([](const auto &) { return Packets{{"garbage of some length"}}; }), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(value_of([](const auto &) { return Packets{{"BIPC"}}; }), IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, answers_half_a_frame)
{
    EXPECT_EQ(value_of([](const board::RequestFrame &request) {
                  return Packets{{bytes_of(answer_to(request)).substr(0, 30)}};
              }),
              IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, sends_the_request_back)
{
    EXPECT_EQ(value_of([](const board::RequestFrame &request) {
                  return Packets{{std::string(reinterpret_cast<const char *>(&request), request.size())}};
              }),
              IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, answers_with_a_stale_sequence_number)
{
    EXPECT_EQ(value_of_altered([](board::AnswerFrame &answer) { --answer.header.sequence; }), IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, answers_another_request)
{
    EXPECT_EQ(value_of_altered([](auto &answer) { ++answer.header.msg_type; }), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(value_of_altered([](auto &answer) { ++answer.header.module; }), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(value_of_altered([](auto &answer) { answer.header.head.detail ^= 1; }), IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, states_a_length_that_is_not_the_packets)
{
    EXPECT_EQ(value_of_altered([](auto &answer) { answer.header.length = 2; }), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(value_of_altered([](auto &answer) { answer.header.length = 4; }), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(value_of_altered([](auto &answer) { answer.header.length = 0xffffffff; }), IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, sends_more_than_a_frame_holds)
{
    EXPECT_EQ(value_of([](const board::RequestFrame &request) {
                  board::AnswerFrame answer = answer_to(request);
                  answer.header.length = IPC_MAX_LENGTH + 1;
                  const std::string header(reinterpret_cast<const char *>(&answer), sizeof answer.header);
                  return Packets{{header + std::string(IPC_MAX_LENGTH + 1, 'x')}};
              }),
              IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, sends_every_answer_twice_and_none_is_taken_for_the_next)
{
    RawService service(GetParam().kind, [](const board::RequestFrame &request) {
        return Packets{{bytes_of(answer_to(request))}, {bytes_of(answer_to(request))}};
    });
    for (const char *token : {"abc", "def", "ghi", "jkl"}) {
        char response[4] = "###";
        uint32_t length = 3, status;
        const int32_t value = GetParam().get(test_module, test_channel, token, 3, response, &length, &status);
        EXPECT_TRUE(value == IPC_OK || value == IPC_ERR_BROKEN_ANSWER) << value;
        EXPECT_STREQ(response, value == IPC_OK ? token : "###");
    }
}

TEST_P(HostileService, passes_memory_that_could_shrink_or_change)
{
    for (const int missing : {F_SEAL_SHRINK, F_SEAL_GROW, F_SEAL_SEAL, F_SEAL_WRITE}) {
        const auto memory = memory_for_a_result(memory_header + 2, all_seals & ~missing);
        EXPECT_EQ(value_of_memory(memory), IPC_ERR_BROKEN_ANSWER) << "without seal " << missing;
    }
}

TEST_P(HostileService, passes_a_file_that_is_no_memory)
{
    const board::Descriptor null(open("/dev/null", O_RDWR));
    EXPECT_EQ(value_of_memory(null), IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, passes_memory_of_a_wrong_length)
{
    for (const off_t size : {off_t{0}, off_t{10}, off_t{memory_header + BOARD_RESULT_MAX + 1}}) {
        const auto memory = memory_for_a_result(size, all_seals);
        EXPECT_EQ(value_of_memory(memory), IPC_ERR_BROKEN_ANSWER) << "of " << size;
    }
}

TEST_P(HostileService, points_outside_of_its_memory)
{
    const auto memory = memory_for_a_result(memory_header + 2, all_seals);
    const std::pair<uint32_t, uint32_t> places[] = {{0, 2},  {63, 2},          {65, 2},        {64, 3},
                                                    {67, 0}, {64, 0xffffffff}, {0xffffffff, 2}};
    for (const auto &[offset, length] : places) {
        EXPECT_EQ(value_of_memory(memory, result_at(offset, length)), IPC_ERR_BROKEN_ANSWER)
            << offset << ", " << length;
    }
}

TEST_P(HostileService, describes_a_result_of_an_unknown_kind)
{
    const auto memory = memory_for_a_result(memory_header + 2, all_seals);
    for (const uint16_t state : {uint16_t{4}, uint16_t{5}, uint16_t{0xffff}}) {
        board::Result result = result_at(memory_header, 2);
        result.state = state;
        EXPECT_EQ(value_of_memory(memory, result), IPC_ERR_BROKEN_ANSWER) << state;
    }
}

TEST_P(HostileService, announces_memory_and_passes_none)
{
    board::Result in_no_memory = good_result;
    in_no_memory.new_memory = 0;
    EXPECT_EQ(value_of_result(in_no_memory, {}), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(value_of_result(good_result, {{head_of(board::Kind::memory)}}), IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, passes_memory_with_another_packet_than_its_own)
{
    const auto memory = memory_for_a_result(memory_header + 2, all_seals);
    EXPECT_EQ(value_of_result(good_result, {{head_of(board::Kind::answer), memory.get()}}), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(value_of_result(good_result, {{"memory", memory.get()}}), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(value_of_result(good_result, {{head_of(board::Kind::memory) + "and more", memory.get()}}),
              IPC_ERR_BROKEN_ANSWER);
}

TEST_P(HostileService, has_taken_the_result_back)
{
    const auto memory = memory_for_a_result(memory_header + 2, all_seals);
    EXPECT_EQ(value_of_memory(memory, result_at(memory_header, 2, 2)), IPC_OK);
    const std::string log = log_of([] { EXPECT_EQ(db_from_shmem(key, 100), nullptr); });
    EXPECT_NE(log.find("took the result"), std::string::npos) << log;
}

TEST_P(HostileService, passes_descriptors_that_the_client_does_not_keep)
{
    const auto memory = memory_for_a_result(10, all_seals);
    const board::Descriptor null(open("/dev/null", O_RDWR));
    value_of([](const auto &) { return Packets{{"the end of any connection before"}}; });
    const size_t before = open_descriptors();
    for (int round = 0; round < 10; ++round) {
        value_of_memory(memory);
        value_of_memory(null);
        value_of([&](const auto &) { return Packets{{"garbage", null.get()}}; });
    }
    EXPECT_EQ(open_descriptors(), before);
}

// Behind its first answer it sends a packet with a descriptor that closes in an hour.
class LingeringService
{
public:
    explicit LingeringService(const char *kind)
        : service(kind, [this](const board::RequestFrame &request) {
              Packets packets{{bytes_of(answer_to(request))}};
              if (passed) packets.push_back({"behind it", passed.release(), true});
              return packets;
          })
    {
    }

private:
    board::Descriptor other_end;
    board::Descriptor passed = lingering_connection(other_end);
    RawService service;
};

TEST_P(HostileService, passes_what_takes_an_hour_to_close_and_the_next_call_does_not_wait)
{
    const LingeringService service(GetParam().kind);
    EXPECT_EQ(call(), IPC_OK);
    usleep(20000); // the packet may take a moment
    EXPECT_EQ(call(), IPC_ERR_BROKEN_ANSWER);
    EXPECT_EQ(call(), IPC_OK);
}

TEST_P(HostileService, passes_what_takes_an_hour_to_close_and_the_end_of_the_thread_does_not_wait)
{
    const LingeringService service(GetParam().kind);
    std::thread([this] {
        EXPECT_EQ(call(), IPC_OK);
        usleep(20000); // the packet may take a moment
    }).join();
}

TEST_P(HostileService, is_followed_by_one_that_is_served_as_if_nothing_had_been)
{
    value_of([](const auto &) { return Packets{{"garbage"}}; });
    TestService service(echo());
    EXPECT_EQ(call(), IPC_OK);
}

INSTANTIATE_TEST_SUITE_P(Connection, HostileService, testing::Values(Kind{"seq", ipc_get_exec}));
INSTANTIATE_TEST_SUITE_P(Datagram, HostileService, testing::Values(Kind{"dgram", ipc_dgram_get_exec}));

} // namespace
