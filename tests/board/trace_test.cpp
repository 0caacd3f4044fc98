// These tests check what clients record because of BOARD_IPC_TRACE, what services record, and how it is read back.
#include <bit>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <tuple>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "board/datastore.h"
#include "board/trace.h"
#include "support.h"

namespace
{

const std::string &trace_name()
{
    static const std::string name = "/tmp/board-trace-" + std::to_string(getpid());
    return name;
}

const TestEnvironment environment({{"BOARD_IPC_TIMEOUT_MS", "30000"}, {"BOARD_IPC_TRACE", trace_name().c_str()}});

// All tests use this file, which is removed at the end.
struct RemoveTrace : testing::Environment {
    void TearDown() override { unlink(trace_name().c_str()); }
};
const testing::Environment *const at_the_end = testing::AddGlobalTestEnvironment(new RemoveTrace);

struct Close {
    void operator()(board_trace *trace) const { board_trace_close(trace); }
};
using Trace = std::unique_ptr<board_trace, Close>;

class Tracing : public testing::Test
{
protected:
    // Each test reads only what it has caused.
    void SetUp() override
    {
        if (Trace trace{board_trace_open(trace_name().c_str(), nullptr)}) {
            board_trace_entry entry;
            while (board_trace_next(trace.get(), &entry) == 1)
                ++before;
        }
    }

    Trace news()
    {
        Trace trace{board_trace_open(trace_name().c_str(), nullptr)};
        board_trace_entry entry;
        for (int seen = 0; trace && seen < before; ++seen)
            board_trace_next(trace.get(), &entry);
        return trace;
    }

    int before = 0;
};

TEST_F(Tracing, records_an_exchange)
{
    TestService service([](const board_request &, board_answer &answer) {
        board_answer_status(&answer, 17);
        board_answer_data(&answer, "response", 8);
        board_answer_result(&answer, 352, "{}", 2);
    });
    char record[8] = "request";
    uint32_t length = 3, status;
    ASSERT_EQ(ipc_get_exec(test_module, test_channel, record, 7, record, &length, &status), IPC_OK);

    const Trace trace = news();
    ASSERT_NE(trace, nullptr);
    board_trace_entry entry;
    ASSERT_EQ(board_trace_next(trace.get(), &entry), 1);
    const board_trace_record &seen = entry.record;
    EXPECT_EQ(seen.pid, static_cast<uint32_t>(getpid()));
    EXPECT_EQ(seen.call, BOARD_CALL_GET);
    EXPECT_EQ(seen.module, test_module);
    EXPECT_EQ(seen.msg_type, test_channel);
    EXPECT_EQ(seen.allowed, 3u);
    EXPECT_EQ(seen.ipc_result, IPC_OK);
    EXPECT_EQ(seen.status, 17u);
    EXPECT_EQ(seen.result_key, 352u);
    EXPECT_EQ(seen.result_length, 2u);
    EXPECT_EQ(std::string(entry.request, entry.request + seen.request_length), "request");
    EXPECT_EQ(std::string(entry.response, entry.response + seen.response_length), "response");
    EXPECT_EQ(std::string(entry.result, seen.result_carried), "{}");
    EXPECT_EQ(board_trace_next(trace.get(), &entry), 0);
}

TEST_F(Tracing, leaves_the_result_to_the_caller)
{
    TestService service(
        [](const board_request &, board_answer &answer) { board_answer_result(&answer, 352, "{}", 2); });
    uint32_t status;
    ASSERT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    db_handle *db = db_from_shmem(352, 100);
    ASSERT_NE(db, nullptr);
    db_free(db);
}

TEST_F(Tracing, records_a_failure)
{
    uint32_t status;
    ASSERT_EQ(ipc_dgram_set_exec(test_module, test_channel, "lost", 4, &status), IPC_ERR_NO_SERVICE);
    const Trace trace = news();
    board_trace_entry entry;
    ASSERT_EQ(board_trace_next(trace.get(), &entry), 1);
    EXPECT_EQ(entry.record.call, BOARD_CALL_DGRAM_SET);
    EXPECT_EQ(entry.record.ipc_result, IPC_ERR_NO_SERVICE);
    EXPECT_EQ(std::string(entry.request, entry.request + entry.record.request_length), "lost");
    EXPECT_EQ(entry.record.response_length, 0u);
}

TEST_F(Tracing, records_whole_exchanges_of_several_processes_and_threads)
{
    TestService service(echo());
    const auto calls = [] {
        const std::string request(500, 'r');
        uint32_t status;
        for (int round = 0; round < 50; ++round)
            if (ipc_set_exec(test_module, test_channel, request.data(), 500, &status)) return 1;
        return 0;
    };
    std::vector<std::thread> callers;
    for (int caller = 0; caller < 4; ++caller)
        callers.emplace_back([&] { EXPECT_EQ(in_child(calls), 0); });
    EXPECT_EQ(calls(), 0);
    for (std::thread &caller : callers)
        caller.join();

    const Trace trace = news();
    board_trace_entry entry;
    for (int record = 0; record < 250; ++record) {
        ASSERT_EQ(board_trace_next(trace.get(), &entry), 1);
        ASSERT_EQ(std::string(entry.request, entry.request + entry.record.request_length), std::string(500, 'r'));
    }
    EXPECT_EQ(board_trace_next(trace.get(), &entry), 0);
}

TEST_F(Tracing, is_for_its_owner_only)
{
    uint32_t status;
    ipc_set_exec(test_module, test_channel, "", 1, &status);
    struct stat found {
    };
    ASSERT_EQ(stat(trace_name().c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0600u);
}

// An Exchange is everything about an exchange except its time and the client's thread.
using Exchange = std::tuple<uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, int32_t, uint32_t, std::string,
                            std::string, uint32_t, uint32_t, std::string>;

std::optional<Exchange> next_exchange(const Trace &trace)
{
    board_trace_entry entry;
    if (!trace || board_trace_next(trace.get(), &entry) != 1) return std::nullopt;
    const board_trace_record &seen = entry.record;
    return Exchange{seen.pid,
                    seen.call,
                    seen.module,
                    seen.msg_type,
                    seen.allowed,
                    seen.ipc_result,
                    seen.status,
                    {entry.request, entry.request + seen.request_length},
                    {entry.response, entry.response + seen.response_length},
                    seen.result_key,
                    seen.result_length,
                    {entry.result, seen.result_carried}};
}

class Recording : public Tracing
{
protected:
    ~Recording() override { unlink(name.c_str()); }

    // Makes an exchange by each kind of call.
    static void make_exchanges()
    {
        const std::string request(4124, 'q');
        char response[IPC_MAX_LENGTH];
        uint32_t length = 3, status;
        ipc_get_exec(test_module, test_channel, request.data(), 944, response, &length, &status);
        ipc_set_exec(test_module, test_channel, "set", 4, &status);
        length = sizeof response;
        ipc_dgram_get_exec(test_module, 0, request.data(), 4124, response, &length, &status);
        ipc_dgram_set_exec(test_module, 0, "", 0, &status);
    }
    // Checks that the service recorded the same `count` exchanges as the client.
    void expect_same(int count)
    {
        const Trace of_client = news(), of_service{board_trace_open(name.c_str(), nullptr)};
        for (int exchange = 0; exchange < count; ++exchange) {
            const auto recorded = next_exchange(of_service);
            ASSERT_TRUE(recorded) << exchange;
            EXPECT_EQ(recorded, next_exchange(of_client)) << exchange;
        }
        EXPECT_FALSE(next_exchange(of_service));
    }

    const std::string name = trace_name() + ".service";
};

TEST_F(Recording, of_a_service_is_that_of_its_client)
{
    TestService service(
        [](const board_request &request, board_answer &answer) {
            board_answer_status(&answer, request.length);
            board_answer_data(&answer, request.data, request.length);
            const std::string result(request.length, 'r');
            board_answer_result(&answer, 352, result.data(), request.length);
        },
        nullptr, name.c_str());
    make_exchanges();
    expect_same(4);
}

TEST_F(Recording, has_of_a_failed_exchange_only_the_failure)
{
    TestService service(
        [](const board_request &, board_answer &answer) {
            board_answer_status(&answer, 17);
            board_answer_data(&answer, "response", 8);
            board_answer_result(&answer, 352, "{}", 2);
            board_answer_fail(&answer, IPC_ERR_SERVICE);
        },
        nullptr, name.c_str());
    make_exchanges();
    expect_same(4);
}

TEST_F(Recording, has_requests_that_are_not_allowed)
{
    TestService service(
        echo(), [](const board_request &) { return "not here"; }, name.c_str());
    make_exchanges();
    expect_same(4);
}

TEST_F(Recording, has_the_length_of_a_result_that_is_too_long)
{
    TestService service([](const board_request &,
                           board_answer &answer) { board_answer_result(&answer, 352, nullptr, BOARD_RESULT_MAX + 1); },
                        nullptr, name.c_str());
    make_exchanges();
    expect_same(4);
}

TEST_F(Recording, has_the_times_that_the_service_states)
{
    TestService service(echo(), nullptr, name.c_str());
    make_exchanges();
    const Trace of_client = news(), of_service{board_trace_open(name.c_str(), nullptr)};
    EXPECT_EQ(board_trace_clock(of_client.get()), BOARD_TRACE_TIME_OF_DAY);
    EXPECT_EQ(board_trace_clock(of_service.get()), BOARD_TRACE_SERVICE_TIME);
    board_trace_entry entry;
    ASSERT_EQ(board_trace_next(of_service.get(), &entry), 1);
    EXPECT_EQ(entry.record.time, recorded_time);
}

TEST_F(Recording, does_not_go_on_where_times_are_by_another_clock)
{
    const board_trace_file of_clients{BOARD_TRACE_MAGIC,
                                      BOARD_TRACE_VERSION,
                                      std::endian::native == std::endian::big ? BOARD_TRACE_BIG_ENDIAN
                                                                              : BOARD_TRACE_LITTLE_ENDIAN,
                                      BOARD_TRACE_TIME_OF_DAY,
                                      {}};
    std::ofstream(name, std::ios::binary).write(reinterpret_cast<const char *>(&of_clients), sizeof of_clients);
    const std::string log = log_of([this] { EXPECT_EQ(board_recorder_open(name.c_str()), nullptr); });
    EXPECT_NE(log.find("not a trace file of this version, byte order and clock"), std::string::npos) << log;
}

TEST_F(Recording, has_the_notes_of_the_service)
{
    const std::string longest(BOARD_NOTE_MAX, 'n');
    board_recorder *recorder = board_recorder_open(name.c_str());
    ASSERT_NE(recorder, nullptr);
    board_recorder_note(recorder, 7, test_module, 2, longest.data(), BOARD_NOTE_MAX);
    board_recorder_note(recorder, 8, test_module, 2, longest.data(), BOARD_NOTE_MAX + 1);
    board_recorder_close(recorder);

    const Trace trace{board_trace_open(name.c_str(), nullptr)};
    board_trace_entry entry;
    ASSERT_EQ(board_trace_next(trace.get(), &entry), 1);
    EXPECT_EQ(entry.record.call, static_cast<uint32_t>(BOARD_TRACE_NOTE));
    EXPECT_EQ(entry.record.msg_type, 2u);
    EXPECT_EQ(entry.record.time, 7u);
    EXPECT_EQ(std::string(entry.request, entry.request + entry.record.request_length), longest);
    EXPECT_EQ(board_trace_next(trace.get(), &entry), 0) << "one note was too long";
}

TEST_F(Recording, goes_on_behind_what_the_file_holds)
{
    for (int run = 0; run < 2; ++run) {
        TestService service(echo(), nullptr, name.c_str());
        make_exchanges();
    }
    expect_same(8);
}

TEST_F(Recording, takes_the_permissions_of_others_from_a_file_that_had_them)
{
    {
        TestService service(echo(), nullptr, name.c_str());
    }
    ASSERT_EQ(chmod(name.c_str(), 0644), 0);
    TestService service(echo(), nullptr, name.c_str());
    struct stat found {
    };
    ASSERT_EQ(stat(name.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777, 0600u);
}

// Only root can make a file of another user. For other users there is one of root, which they may not write.
TEST_F(Recording, is_not_written_into_a_file_of_another_user)
{
    constexpr uid_t somebody = 65534;
    const bool root = geteuid() == 0;
    const std::string file = root ? name : "/etc/passwd";
    if (root) std::ofstream(file).flush();
    if (root) {
        ASSERT_EQ(chown(file.c_str(), somebody, somebody), 0);
    }
    const auto size = std::filesystem::file_size(file);
    const std::string log = log_of([&] {
        TestService service(echo(), nullptr, file.c_str());
        EXPECT_FALSE(service.is_running());
    });
    EXPECT_NE(log.find(file +
                       " cannot be used for the trace: " + (root ? "it belongs to another user" : "Permission denied")),
              std::string::npos)
        << log;
    EXPECT_EQ(std::filesystem::file_size(file), size);
}

TEST_F(Recording, needs_a_file_that_is_one)
{
    std::ofstream(name) << "some other file, which must not be spoiled";
    const std::string log = log_of([this] {
        TestService service(echo(), nullptr, name.c_str());
        EXPECT_FALSE(service.is_running());
    });
    EXPECT_NE(log.find(name + " cannot be used for the trace: it is not a trace file"), std::string::npos) << log;
    EXPECT_EQ(std::filesystem::file_size(name), 42u);
}

class TraceFile : public testing::Test
{
protected:
    ~TraceFile() { unlink(name.c_str()); }

    Trace open(const std::string &bytes)
    {
        std::ofstream(name, std::ios::binary) << bytes;
        return Trace(board_trace_open(name.c_str(), &why));
    }
    static std::string header(uint8_t order)
    {
        const board_trace_file file{BOARD_TRACE_MAGIC, BOARD_TRACE_VERSION, order, BOARD_TRACE_TIME_OF_DAY, {}};
        return {reinterpret_cast<const char *>(&file), sizeof file};
    }

    const std::string name = trace_name() + ".file";
    const char *why = "";
    board_trace_entry entry;
};

TEST_F(TraceFile, that_is_none_is_refused_with_the_reason)
{
    EXPECT_EQ(open("some other file"), nullptr);
    EXPECT_STREQ(why, "not a trace file");
    std::string other = header(BOARD_TRACE_LITTLE_ENDIAN);
    other[8] = 9;
    EXPECT_EQ(open(other), nullptr);
    EXPECT_STREQ(why, "a trace file of another version");
    std::string unknown = header(BOARD_TRACE_LITTLE_ENDIAN);
    unknown[10] = 2;
    EXPECT_EQ(open(unknown), nullptr);
    EXPECT_STREQ(why, "a trace file of an unknown clock");
    EXPECT_EQ(board_trace_open("/nonexistent", &why), nullptr);
    EXPECT_STREQ(why, "No such file or directory");
}

TEST_F(TraceFile, of_a_big_endian_client_reads_everywhere)
{
    const unsigned char record[64] = {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, // time
                                      0,    0,    0,    68,   0,    0,    1,    2,    // size, pid
                                      0,    0,    1,    3,    0,    0,    0,    1,    // tid, call
                                      0,    0,    0,    6,    0,    0,    0,    232,  // module, msg_type
                                      0,    0,    3,    0xb0, 0xff, 0xff, 0xff, 0xfd, // allowed, ipc_result
                                      0xca, 0xfe, 0xba, 0xbe, 0,    0,    0,    1,    // status, request_length
                                      0,    0,    0,    2,    0,    0,    1,    0x60, // response_length, result_key
                                      0,    0x10, 0,    1,    0,    0,    0,    1};   // result_length, carried
    const Trace trace = open(header(BOARD_TRACE_BIG_ENDIAN) + std::string(record, record + 64) + "qaar");
    ASSERT_NE(trace, nullptr);
    EXPECT_EQ(board_trace_byte_order(trace.get()), BOARD_TRACE_BIG_ENDIAN);
    ASSERT_EQ(board_trace_next(trace.get(), &entry), 1);
    const board_trace_record &read = entry.record;
    EXPECT_EQ(read.time, 0x0102030405060708u);
    EXPECT_EQ(read.pid, 0x102u);
    EXPECT_EQ(read.tid, 0x103u);
    EXPECT_EQ(read.allowed, 944u);
    EXPECT_EQ(read.ipc_result, IPC_ERR_TIMEOUT);
    EXPECT_EQ(read.status, 0xcafebabeu);
    EXPECT_EQ(read.result_length, 0x100001u);
    EXPECT_EQ(*entry.request, 'q');
    EXPECT_EQ(*entry.response, 'a');
    EXPECT_EQ(*entry.result, 'r');
    EXPECT_EQ(board_trace_next(trace.get(), &entry), 0);
}

TEST_F(TraceFile, that_ends_within_a_record_is_damaged)
{
    board_trace_record record{};
    record.size = sizeof record + 4;
    record.request_length = 4;
    const std::string head(reinterpret_cast<const char *>(&record), sizeof record);
    const auto own = std::endian::native == std::endian::little ? BOARD_TRACE_LITTLE_ENDIAN : BOARD_TRACE_BIG_ENDIAN;
    for (const std::string &rest : {head.substr(0, 63), head, head + "123"}) {
        const Trace trace = open(header(own) + rest);
        ASSERT_NE(trace, nullptr);
        EXPECT_EQ(board_trace_next(trace.get(), &entry), -1);
    }
}

TEST_F(TraceFile, with_lengths_that_do_not_add_up_is_damaged)
{
    board_trace_record record{};
    record.size = 0xfffffff0;
    record.request_length = 0xfffffff0 - sizeof record;
    const std::string head(reinterpret_cast<const char *>(&record), sizeof record);
    const auto own = std::endian::native == std::endian::little ? BOARD_TRACE_LITTLE_ENDIAN : BOARD_TRACE_BIG_ENDIAN;
    const Trace trace = open(header(own) + head + std::string(100, 'x'));
    ASSERT_NE(trace, nullptr);
    EXPECT_EQ(board_trace_next(trace.get(), &entry), -1);
}

} // namespace
