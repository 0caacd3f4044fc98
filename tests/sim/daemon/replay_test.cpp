// These tests let `ponsim replay` serve recordings that the tests make.
#include <bit>
#include <cstdlib>
#include <fstream>

#include "board/datastore.h"
#include "board/ipc.h"
#include "board/service.h"
#include "board/trace.h"
#include "daemon.h"
#include "support.h"

namespace ponsim
{
namespace
{

constexpr uint8_t own_order =
    std::endian::native == std::endian::big ? BOARD_TRACE_BIG_ENDIAN : BOARD_TRACE_LITTLE_ENDIAN;
constexpr uint8_t other_order =
    own_order == BOARD_TRACE_BIG_ENDIAN ? BOARD_TRACE_LITTLE_ENDIAN : BOARD_TRACE_BIG_ENDIAN;

struct Exchange {
    board_call call = BOARD_CALL_GET;
    bsp_pon_msg request{};
    int32_t ipc_result = IPC_OK;
    uint32_t status = 0;
    std::string response = {};
    std::string result = {};
    uint32_t module = BSP_IPC_MODULE;
};

// The IPC library reads its folder once. So all tests use one folder, with one daemon at a time.
class ReplayTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        folder = new Folder;
        setenv("BOARD_IPC_DIR", folder->file("ipc").c_str(), 1);
    }
    static void TearDownTestSuite() { delete folder; }
    static std::string file() { return folder->file("recording"); }

    static void write(const std::vector<Exchange> &exchanges, uint8_t order = own_order)
    {
        std::ofstream out(file(), std::ios::binary);
        const board_trace_file header{BOARD_TRACE_MAGIC, BOARD_TRACE_VERSION, order, BOARD_TRACE_TIME_OF_DAY, {}};
        out.write(reinterpret_cast<const char *>(&header), sizeof header);
        for (const Exchange &exchange : exchanges) {
            board_trace_record record{};
            record.call = exchange.call;
            record.module = exchange.module;
            record.msg_type = BSP_MSG_PON;
            record.ipc_result = exchange.ipc_result;
            record.status = exchange.status;
            record.request_length = sizeof exchange.request;
            record.response_length = static_cast<uint32_t>(exchange.response.size());
            record.result_key = exchange.result.empty() ? 0 : exchange.request.cmd;
            record.result_length = record.result_carried = static_cast<uint32_t>(exchange.result.size());
            record.size = static_cast<uint32_t>(sizeof record + sizeof exchange.request + exchange.response.size() +
                                                exchange.result.size());
            out.write(reinterpret_cast<const char *>(&record), sizeof record);
            out.write(reinterpret_cast<const char *>(&exchange.request), sizeof exchange.request);
            out << exchange.response << exchange.result;
        }
    }

    // Returns the output of a ponsim that refuses the recording.
    static std::string refusal()
    {
        Daemon daemon({"replay", file()});
        int exit_status = 0;
        const std::string said = daemon.rest(exit_status);
        EXPECT_EQ(exit_status, 1);
        return said;
    }

    static Folder *folder;
};
Folder *ReplayTest::folder;

// Returns the status of an answer, or the IPC library's result.
int64_t ask(const bsp_pon_msg &request)
{
    bsp_pon_msg response{};
    uint32_t length = sizeof response, status = 0;
    const int32_t result =
        ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, &request, sizeof request, &response, &length, &status);
    if (result != IPC_OK) return result;
    return status;
}

TEST_F(ReplayTest, AnswersWithTheSameBytesAndTheResult)
{
    write({{.request = record_of(386, 1), .status = 7, .response = "response", .result = R"([{"port":1}])"}});
    Daemon daemon({"replay", file()});
    ASSERT_TRUE(daemon.serves());
    const bsp_pon_msg request = record_of(386, 1);
    char response[100];
    uint32_t length = sizeof response, status = 0;
    ASSERT_EQ(ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, &request, sizeof request, response, &length, &status), IPC_OK);
    EXPECT_EQ(status, 7u);
    EXPECT_EQ(std::string(response, length), "response");
    db_handle *result = db_from_shmem(386, max_result);
    EXPECT_STREQ(db_text(result, nullptr), R"([{"port":1}])");
    db_free(result);
}

TEST_F(ReplayTest, AnswersInRecordedOrderAndRepeatsTheLast)
{
    write({{.request = record_of(386, 1), .status = 1},
           {.request = record_of(386, 2), .status = 20},
           {.request = record_of(386, 1), .status = 2}});
    Daemon daemon({"replay", file()});
    ASSERT_TRUE(daemon.serves());
    for (const int64_t status : {1, 2, 2, 2})
        EXPECT_EQ(ask(record_of(386, 1)), status);
    EXPECT_EQ(ask(record_of(386, 2)), 20);
}

TEST_F(ReplayTest, StartsOverWhenItLoops)
{
    write({{.request = record_of(386, 1), .status = 1}, {.request = record_of(386, 1), .status = 2}});
    Daemon daemon({"replay", file(), "--loop"});
    ASSERT_TRUE(daemon.serves());
    for (const int64_t status : {1, 2, 1, 2})
        EXPECT_EQ(ask(record_of(386, 1)), status);
}

TEST_F(ReplayTest, AnswersOtherBytesOfACommandAndSaysSo)
{
    write({{.request = record_of(386, 1), .status = 1}});
    Daemon daemon({"replay", file()});
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(ask(record_of(386, 9)), 1);
    EXPECT_NE(daemon.line().find("BSP_MSG_PON, command BSP_CMD_VIEW_BASE_INFO_WEB: not recorded with these bytes"),
              std::string::npos);
}

TEST_F(ReplayTest, FailsWhatWasNotRecorded)
{
    write({{.request = record_of(386, 1)}, {.call = BOARD_CALL_SET, .request = record_of(367, 1)}});
    Daemon daemon({"replay", file()});
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(ask(record_of(4711)), IPC_ERR_SERVICE);
    EXPECT_NE(daemon.line().find("BSP_MSG_PON, command 4711: not recorded"), std::string::npos);
    EXPECT_EQ(ask(record_of(367, 1)), IPC_ERR_SERVICE) << "it was recorded of another call";
}

TEST_F(ReplayTest, FailsAsRecordedWhereTheServiceDid)
{
    write({{.request = record_of(386, 1), .ipc_result = IPC_ERR_NO_SERVICE},
           {.request = record_of(386, 1), .ipc_result = IPC_ERR_REFUSED},
           {.request = record_of(386, 1), .ipc_result = IPC_ERR_TIMEOUT},
           {.request = record_of(386, 1), .status = 3}});
    Daemon daemon({"replay", file()});
    ASSERT_TRUE(daemon.serves());
    for (const int64_t value : {IPC_ERR_REFUSED, IPC_ERR_TIMEOUT, 3})
        EXPECT_EQ(ask(record_of(386, 1)), value);
}

TEST_F(ReplayTest, RefusesARecordingOfTheOtherByteOrder)
{
    write({}, other_order);
    EXPECT_NE(refusal().find("recorded on a machine of the other byte order"), std::string::npos);
}

TEST_F(ReplayTest, SaysWhereARecordingIsDamaged)
{
    write({{.request = record_of(386, 1)}, {.request = record_of(386, 2)}});
    std::filesystem::resize_file(file(), std::filesystem::file_size(file()) - 1);
    EXPECT_EQ(refusal(), "ponsim: " + file() + ": damaged at record 2\n");
}

TEST_F(ReplayTest, RefusesARecordingOfOtherServices)
{
    write({{.request = record_of(386, 1), .module = 7}});
    EXPECT_EQ(refusal(), "ponsim: " + file() + ": holds no exchange with the PON service\n");
}

TEST_F(ReplayTest, OfADaemonNeedsAFileThatCanBeWritten)
{
    Daemon daemon({"--state", "none", "--record", folder->file("nowhere/recording")});
    EXPECT_NE(daemon.line().find("nowhere/recording cannot be used for the trace: No such file"), std::string::npos);
    int exit_status = 0;
    daemon.rest(exit_status);
    EXPECT_EQ(exit_status, 1);
}

TEST_F(ReplayTest, RefusesAFileThatIsNoRecording)
{
    std::ofstream(file()) << "some other file";
    EXPECT_EQ(refusal(), "ponsim: " + file() + ": not a trace file\n");
}

} // namespace
} // namespace ponsim
