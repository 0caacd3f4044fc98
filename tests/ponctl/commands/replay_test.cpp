// These tests run ponctl replay of exchanges that ponctl made with one service, against another service.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/ipc.h"
#include "board/trace.h"
#include "fake_service.h"

namespace
{

using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

class Replay : public testing::Test
{
protected:
    Replay()
    {
        char path[] = "/tmp/ponctl_replay_XXXXXX";
        file = std::string(mkdtemp(path)) + "/recording";
    }
    ~Replay() override { std::filesystem::remove_all(std::filesystem::path(file).parent_path()); }

    // Records what ponctl does with a service that answers like this.
    void record(const FakeService::Handler &answering, const Words &words) const
    {
        const FakeService service(answering);
        setenv("BOARD_IPC_TRACE", file.c_str(), 1);
        service.ponctl(words);
        unsetenv("BOARD_IPC_TRACE");
    }
    // Replays the recording against a service that answers like this.
    Finished replay(const FakeService::Handler &answering, const Words &options = {}) const
    {
        const FakeService service(answering);
        Words words{"replay", file, "--no-headings"};
        words.insert(words.end(), options.begin(), options.end());
        return service.ponctl(words);
    }

    static const Words query;

    std::string file;
};
const Words Replay::query{"raw", "BSP_MSG_PON", "get", "cmd=BSP_CMD_VIEW_BASE_INFO_WEB", "pon_port=3"};

FakeService::Handler denied()
{
    return [](const board_request &, board_answer *answer) { board_answer_fail(answer, IPC_ERR_REFUSED); };
}

TEST_F(Replay, SendsTheSameBytes)
{
    record({}, query);
    const FakeService service;
    EXPECT_EQ(service.ponctl({"replay", file}).code, 0);
    ASSERT_EQ(service.received().size(), 1u);
    EXPECT_EQ(service.received()[0].call, BOARD_CALL_GET);
    EXPECT_EQ(service.received()[0].record, pon_record({{0, 386}, {4, 3}}));
}

TEST_F(Replay, OfTheSameAnswersShowsNothing)
{
    const auto answering = bytes(pon_record({{4, 3}}));
    record(answering, query);
    const Finished finished = replay(answering);
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "ponctl: 1 exchanges, 0 differ\n");
}

TEST_F(Replay, ShowsEqualExchangesWhenAsked)
{
    record({}, query);
    EXPECT_THAT(replay({}, {"--verbose"}).out, ContainsRegex("^ *1 get +BSP_CMD_VIEW_BASE_INFO_WEB equal"));
}

TEST_F(Replay, NamesTheFieldsThatDiffer)
{
    record(bytes(pon_record({{4, 3}, {8, 5}})), query);
    const Finished finished = replay(bytes(pon_record({{4, 4}, {8, 5}})));
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.out, ContainsRegex("^ *1 get +BSP_CMD_VIEW_BASE_INFO_WEB pon_port 3 +4\n$"));
    EXPECT_EQ(finished.err, "ponctl: 1 exchanges, 1 differ\n");
}

TEST_F(Replay, NamesTheStatus)
{
    record(status(4005), query);
    EXPECT_THAT(replay(status(0)).out, ContainsRegex("status 4005 PON_ERR_NOT_BOUND: .* 0 BSP_OK: success\n"));
}

TEST_F(Replay, NamesTheLength)
{
    record(bytes({1, 0, 0, 0}), query);
    EXPECT_THAT(replay(bytes({1, 0, 0, 0, 9, 9, 9, 9})).out, ContainsRegex("response_length 4 +8\n$"));
}

TEST_F(Replay, LeavesOutBytesThatASetCallDoesNotReceive)
{
    record(bytes({1, 2, 3, 4}), {"raw", "BSP_MSG_PON", "set", "cmd=BSP_CMD_VIEW_BASE_INFO_WEB"});
    EXPECT_EQ(replay({}).err, "ponctl: 1 exchanges, 0 differ\n");
}

TEST_F(Replay, NamesBytesThatNoFieldHas)
{
    const auto answer = [](uint8_t behind_the_text) {
        std::vector<uint8_t> record = pon_record({});
        record[45] = 'x';
        record[47] = behind_the_text;
        return bytes(record);
    };
    record(answer(0), query);
    EXPECT_THAT(replay(answer(7)).out, ContainsRegex("byte 47 hex:00 +hex:07\n$"));
}

TEST_F(Replay, NamesRowsAndColumns)
{
    record(result(386, R"([{"port":1,"onus":8},{"port":2,"onus":8}])"), query);
    EXPECT_THAT(replay(result(386, R"([{"port":1,"onus":8},{"port":2,"onus":9}])")).out,
                ContainsRegex("^[^\n]*row 2 onus 8 +9\n$"));
}

TEST_F(Replay, NamesTheNumberOfRowsAndTheColumnsOfOneSide)
{
    record(result(386, R"([{"port":1,"old":1}])"), query);
    const std::string out = replay(result(386, R"([{"port":1,"new":2},{"port":2}])")).out;
    EXPECT_THAT(out, ContainsRegex("rows +1 +2\n"));
    EXPECT_THAT(out, ContainsRegex("row 1 old +1 +-\n"));
    EXPECT_THAT(out, ContainsRegex("row 1 new +- +2\n"));
}

TEST_F(Replay, NamesRowsOfAnEmptyResult)
{
    record(result(386, "[]"), query);
    EXPECT_THAT(replay(result(386, R"([{"port":1}])")).out, ContainsRegex("^[^\n]* rows +0 +1\n$"));
}

TEST_F(Replay, NamesColumnsOfAResultThatIsATextInTheAnswer)
{
    const auto answer = [](const std::string &speed) {
        const std::string text = R"([{"type":")" + std::string(500, 't') + R"(","speed":)" + speed + "}]";
        std::vector<uint8_t> record(1044);
        std::ranges::copy(text, record.begin() + 20);
        return bytes(record);
    };
    record(answer("10"), {"raw", "BSP_MSG_ONU_CFG", "get", "onu_cmd=BSP_CMD_VIEW_ONU_CONFIG"});
    EXPECT_THAT(replay(answer("12")).out, ContainsRegex("^[^\n]* row 1 speed 10 +12\n$"));
}

TEST_F(Replay, NamesAResultThatIsNoMore)
{
    record(result(386, "[{}]"), query);
    EXPECT_THAT(replay({}).out, ContainsRegex("result \\[\\{\\}\\] +none\n$"));
}

TEST_F(Replay, IgnoresWhatItIsTold)
{
    record(result(386, R"([{"port":1,"distance":8,"loid":1}])"), query);
    const Finished finished =
        replay(result(386, R"([{"port":1,"distance":9,"loid":2}])"), {"--ignore", "distance", "--ignore", "loid"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "");
}

TEST_F(Replay, ReadsAsJson)
{
    record(result(386, R"([{"onus":8}])"), query);
    const auto document = parsed(replay(result(386, R"([{"onus":9}])"), {"-o", "json"}).out);
    ASSERT_EQ(document.Size(), 1u);
    EXPECT_EQ(document[0]["exchange"].GetUint(), 1u);
    const auto &difference = document[0]["differences"][0];
    EXPECT_STREQ(difference["field"].GetString(), "onus");
    EXPECT_EQ(difference["row"].GetUint(), 1u);
    EXPECT_STREQ(difference["recorded"].GetString(), "8");
    EXPECT_STREQ(difference["live"].GetString(), "9");
}

TEST_F(Replay, OfARefusalNeedsARefusal)
{
    record(denied(), query);
    EXPECT_EQ(replay(denied()).code, 0);
    EXPECT_THAT(replay({}).out, HasSubstr("ipc_result -5 the service's access rules refuse the request 0 success\n"));
}

TEST_F(Replay, EndsWhereNobodyAnswers)
{
    record({}, query);
    const Finished finished = ponctl({"--socket-dir", "/nowhere", "replay", file});
    EXPECT_EQ(finished.code, 3);
    EXPECT_THAT(finished.err, StartsWith("ponctl: 0 exchanges, 0 differ\nponctl: exchange 1: IPC failure -1: "));
}

TEST_F(Replay, OfChangesMustBeConfirmed)
{
    record({}, query);
    record({}, {"call", "bsp_pon_no_bind_onu_spec_id", "pon_port=1", "onu_id=2", "--yes"});
    const Finished finished = replay({});
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.err, StartsWith("ponctl: --yes: missing; sending 1 requests that change something"));
    EXPECT_EQ(replay({}, {"--yes"}).err, "ponctl: 2 exchanges, 0 differ\n");
    EXPECT_EQ(replay({}, {"--reads-only"}).err, "ponctl: 1 exchanges, 0 differ\n");
}

TEST_F(Replay, IsNotDry)
{
    record({}, query);
    const FakeService service;
    EXPECT_THAT(service.ponctl({"replay", file, "--dry-run"}).err,
                StartsWith("ponctl: --dry-run: a replay compares what is answered; 'ponctl trace "));
    EXPECT_TRUE(service.received().empty());
}

TEST_F(Replay, OfADamagedRecordingSendsNothing)
{
    record({}, query);
    record({}, query);
    std::filesystem::resize_file(file, std::filesystem::file_size(file) - 1);
    const FakeService service;
    const Finished finished = service.ponctl({"replay", file});
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.err, EndsWith("is damaged at record 2; nothing was sent\n"));
    EXPECT_TRUE(service.received().empty());
}

TEST_F(Replay, OfAnotherByteOrderIsRefused)
{
    record({}, query);
    std::fstream recording(file, std::ios::binary | std::ios::in | std::ios::out);
    recording.seekg(offsetof(board_trace_file, byte_order));
    const int order = recording.get();
    recording.seekp(offsetof(board_trace_file, byte_order));
    recording.put(
        static_cast<char>(order == BOARD_TRACE_BIG_ENDIAN ? BOARD_TRACE_LITTLE_ENDIAN : BOARD_TRACE_BIG_ENDIAN));
    recording.close();
    const Finished finished = replay({});
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.err, HasSubstr("comes from a machine of the other byte order"));
}

} // namespace
