// These tests run ponctl --dry-run as a process against a fake service that must not receive a request that
// changes something.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(DryRun, ShowsEveryRequestDecodedOrInHex)
{
    const FakeService service;
    const Finished finished = service.ponctl({"onu", "multillid", "1/3-4", "2", "--dry-run"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out, StartsWith("not sent: set on BSP_MSG_ONU_INFO, 1888 bytes\n"));
    EXPECT_THAT(finished.out, HasSubstr("onu_onu_id   4\n"));
    EXPECT_THAT(finished.out, Not(HasSubstr("04 00 00 00")));
    EXPECT_THAT(service.ponctl({"onu", "multillid", "1/3-4", "2", "--dry-run", "-o", "hex"}).out,
                HasSubstr("    4  04 00 00 00                                      ....              "
                          "onu_onu_id\n"));
    EXPECT_TRUE(service.settings().empty());
}

TEST(DryRun, SaysWhichOnusWouldBeHit)
{
    const FakeService service(
        rows(384, R"([{"onu_id":3,"mac":"02:00:00:00:00:03","state":"online","description":"main street"},
                      {"onu_id":4,"mac":"02:00:00:00:00:04","state":"offline"}])"));
    EXPECT_THAT(service.ponctl({"onu", "release", "1/3-4", "--dry-run"}).out,
                StartsWith("ONU MAC               STATE   DESCRIPTION\n"
                           "1/3 02:00:00:00:00:03 online  main street\n"
                           "1/4 02:00:00:00:00:04 offline -\n"
                           "2 ONUs, of which 1 is online and goes offline\n\nnot sent: set on BSP_MSG_PON"));
    EXPECT_TRUE(service.settings().empty());
}

TEST(DryRun, IsAnArrayOfRequestsInJson)
{
    const FakeService service;
    const auto requests = parsed(service.ponctl({"--dry-run", "-o", "json", "sla", "show", "1"}).out);
    ASSERT_EQ(requests.Size(), 3u);
    EXPECT_STREQ(requests[1]["channel"].GetString(), "BSP_MSG_PLAT");
    EXPECT_EQ(requests[1]["request"]["plat_port"].GetUint(), 1u);
    EXPECT_THAT(requests[1]["bytes"].GetString(), StartsWith("01000000"));
    EXPECT_TRUE(service.received().empty());
}

TEST(DryRun, AsksNobody)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"sla", "clear", "1", "3", "--dry-run"}).code, 0);
    EXPECT_TRUE(service.settings().empty());
}

TEST(DryRun, EndsWhereAnAnswerIsNeeded)
{
    const FakeService service;
    const Finished finished = service.ponctl({"onu", "show", "1", "3", "--dry-run"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err,
              "ponctl: --dry-run: the requests that follow are made of what bsp_pon_get_onu_info answers\n");
    EXPECT_THAT(finished.out, HasSubstr("BSP_CMD_ONU_INFO_GET"));
    EXPECT_TRUE(service.received().empty());
}

TEST(DryRun, ReadsWhatAChangeIsMadeOf)
{
    const FakeService service(by_command({{470, bytes(answer_to("BSP_CMD_SLA_GET", {{"maximum", 9000}}))},
                                          {384, rows(384, R"([{"onu_id":3,"state":"online"}])")}}));
    const Finished finished = service.ponctl({"sla", "set", "1", "3", "--fixed", "100", "--dry-run"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out, testing::ContainsRegex("fixed +100 kbit/s\nmaximum +9000 kbit/s\n"));
    EXPECT_THAT(service.ponctl({"onu", "multillid", "1/all", "2", "--dry-run"}).out, HasSubstr("onu_onu_id   3\n"));
    EXPECT_TRUE(service.settings().empty());
}

TEST(DryRun, LeavesFilesAlone)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"config", "save", "/nowhere/file", "--dry-run"}).code, 0);
}

TEST(DryRun, OfACommandThatAsksNoServiceSaysSo)
{
    EXPECT_EQ(ponctl({"idset", "1-5", "--dry-run"}).out, "nothing would be sent\n");
    EXPECT_EQ(ponctl({"idset", "1-5", "--dry-run", "-o", "json"}).out, "[]\n");
}

TEST(DryRun, OfWrongArgumentsIsTheirErrorAlone)
{
    const Finished finished = ponctl({"onu", "multillid", "1", "2", "--dry-run"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, StartsWith("ponctl: SET: "));
}

} // namespace
