// These tests run ponctl --dry-run as a process against a fake service that must not receive a request.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

TEST(DryRun, ShowsEveryRequestDecodedAndInHex)
{
    const FakeService service;
    const Finished finished = service.ponctl({"onu", "multillid", "1/3-4", "2", "--dry-run"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out, StartsWith("not sent: set on BSP_MSG_ONU_INFO, 1888 bytes\n"));
    EXPECT_THAT(finished.out, HasSubstr("onu_onu_id   4\n"));
    EXPECT_THAT(finished.out, HasSubstr("    4  04 00 00 00                                      ....              "
                                        "onu_onu_id\n"));
    EXPECT_TRUE(service.received().empty());
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
    EXPECT_TRUE(service.received().empty());
}

TEST(DryRun, EndsWhereAnAnswerIsNeeded)
{
    const FakeService service;
    const Finished finished = service.ponctl({"sla", "set", "1", "3", "--fixed", "100", "--dry-run"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err,
              "ponctl: --dry-run: the requests that follow are made of what bsp_pon_onu_sla_get answers\n");
    EXPECT_THAT(finished.out, HasSubstr("BSP_CMD_SLA_GET"));
    EXPECT_THAT(service.ponctl({"onu", "multillid", "1/all", "2", "--dry-run"}).err, HasSubstr("are made of what"));
    EXPECT_TRUE(service.received().empty());
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
