// These tests run ponctl raw as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

void echo(const board_request &request, board_answer *answer)
{
    board_answer_data(answer, request.data, request.length);
}

TEST(Raw, SendsARecordOnAnyChannelByAnyCall)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"raw", "BSP_MSG_DEBUG", "set", "plat_cmd=0x203", "plat_port=3", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"raw", "238", "dgram-get", "onu_cmd=7"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].call, BOARD_CALL_SET);
    EXPECT_EQ(received[0].channel, 236u);
    EXPECT_EQ(received[0].record.size(), 1148u);
    EXPECT_EQ(received[0].word(92), 0x203u);
    EXPECT_EQ(received[1].call, BOARD_CALL_DGRAM_GET);
    EXPECT_EQ(received[1].channel, 238u);
    EXPECT_EQ(received[1].record.size(), 1888u);
    EXPECT_EQ(received[1].allowed, 1888u);
}

TEST(Raw, PayloadDecidesTheLengthOfAProfileRecord)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"raw", "BSP_MSG_PROFILE", "dgram-set", "action=7", "data=text:hello", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"raw", "BSP_MSG_PROFILE", "dgram-set", "action=7", "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[0].record.size(), 33u);
    EXPECT_EQ(service.received()[1].record.size(), 28u);
}

TEST(Raw, LongPayloadEndsWithTheRecordAndItsTrailer)
{
    const FakeService service;
    const std::string data = "data=text:" + std::string(5000, 'x');
    EXPECT_EQ(service.ponctl({"raw", "BSP_MSG_PROFILE", "dgram-set", data}).code, 2);
    EXPECT_EQ(service.ponctl({"raw", "BSP_MSG_PROFILE", "dgram-set", data, "--allow-long", "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 1u);
    EXPECT_EQ(service.received()[0].record.size(), 4124u);
}

TEST(Raw, ShowsStatusAndFieldsOfTheAnswer)
{
    const FakeService service(echo);
    const Finished finished =
        service.ponctl({"raw", "BSP_MSG_PON", "get", "cmd=BSP_CMD_ONU_BIND", "onu_id=9", "--yes"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "status 0 BSP_OK: success, 944 bytes\n"
                            "FIELD  VALUE\n"
                            "cmd    365 BSP_CMD_ONU_BIND\n"
                            "onu_id 9\n");
}

TEST(Raw, ShowsTheResultUnderTheCommandCode)
{
    const FakeService service(rows(384, R"([{"pon_port":1}])"));
    const Finished finished = service.ponctl({"raw", "BSP_MSG_PON", "get", "cmd=384", "--preset", "0", "-o", "json"});
    EXPECT_EQ(finished.code, 0);
    rapidjson::Document document;
    document.Parse(finished.out.c_str());
    ASSERT_FALSE(document.HasParseError()) << finished.out;
    EXPECT_EQ(document["result"][0]["pon_port"].GetInt(), 1);
    EXPECT_EQ(document["length"].GetInt(), 0);
    EXPECT_EQ(service.received()[0].allowed, 0u);
}

TEST(Raw, TakesTheRecordsFirstBytesAsABlock)
{
    const FakeService service(echo);
    const Finished finished =
        service.ponctl({"raw", "BSP_MSG_UPGRADE", "get", "--data", "hex:0102030405", "-o", "hex"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out,
                StartsWith("    0  01 02 03 04                                      ....              cmd\n"
                           "    4  05 00 00 00                                      ....              "
                           "ext_arg\n"));
    EXPECT_EQ(service.received()[0].record.size(), 1044u);
}

TEST(Raw, SendsAnotherRecordThanTheChannels)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"raw", "BSP_MSG_PLAT", "set", "cmd=1", "--record", "bsp_pon_msg", "--yes"}).code, 0);
    EXPECT_EQ(service.received()[0].record.size(), 944u);
}

TEST(Raw, EndsWithOneForAStatus)
{
    const FakeService service([](const board_request &, board_answer *answer) { board_answer_status(answer, 4001); });
    const Finished finished = service.ponctl({"raw", "BSP_MSG_PON", "set", "cmd=1", "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err, "ponctl: BSP_MSG_PON: status 4001 PON_ERR_UNKNOWN_COMMAND: the service has no such command "
                            "on this channel\n");
}

TEST(Raw, NamesTheCommandThatItsCallIsFor)
{
    EXPECT_THAT(ponctl({"raw", "BSP_MSG_PON", "dgram-get", "cmd=381", "--dry-run"}).out,
                HasSubstr("cmd   381 BSP_CMD_ONU_INFO_GET\n"));
}

TEST(Raw, ReadsTheAnswerAsTheRecordThatItIs)
{
    const FakeService service([](const board_request &, board_answer *answer) {
        std::vector<uint8_t> record(1044);
        record[20] = '7';
        board_answer_data(answer, record.data(), 1044);
    });
    EXPECT_THAT(service.ponctl({"raw", "BSP_MSG_ONU_CFG", "get", "onu_cmd=709"}).out,
                HasSubstr("ext_payload hex:37\n"));
}

TEST(Raw, WrongWordsAreNamed)
{
    const FakeService service;
    EXPECT_THAT(service.ponctl({"raw", "BSP_MSG_PN", "set"}).err,
                StartsWith("ponctl: CHANNEL: 'BSP_MSG_PN' is not a channel; did you mean BSP_MSG_PON? (known are "));
    EXPECT_EQ(service.ponctl({"raw", "232", "put"}).err,
              "ponctl: CALL: 'put' is not one of set, get, dgram-set, dgram-get\n");
    EXPECT_THAT(service.ponctl({"raw", "233", "set"}).err, HasSubstr("CHANNEL: '233' is not a channel"));
    EXPECT_THAT(service.ponctl({"raw", "232", "set", "port=1"}).err,
                StartsWith("ponctl: port: not a field of bsp_pon_msg"));
    EXPECT_EQ(service.ponctl({"raw", "232", "set", "--preset", "1"}).err,
              "ponctl: --preset: only get and dgram-get have an answer to bound\n");
    EXPECT_TRUE(service.received().empty());
}

} // namespace
