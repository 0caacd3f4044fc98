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

TEST(DryRun, SaysInJsonWhomEachRequestHits)
{
    const FakeService service(rows(384, R"([{"onu_id":0,"mac":"02:00:00:00:00:01","state":"online"},
                      {"onu_id":3,"mac":"02:00:00:00:00:03","state":"online","description":"main street"},
                      {"onu_id":4,"mac":"02:00:00:00:00:04","state":"offline"}])"));
    const auto each = parsed(service.ponctl({"onu", "release", "1/0,3", "--dry-run", "-o", "json"}).out);
    ASSERT_EQ(each.Size(), 2u);
    ASSERT_EQ(each[0]["affects"].Size(), 1u);
    EXPECT_STREQ(each[0]["affects"][0]["onu"].GetString(), "1/0");
    EXPECT_TRUE(each[0]["affects"][0]["description"].IsNull());
    const auto &hit = each[1]["affects"][0];
    EXPECT_STREQ(hit["onu"].GetString(), "1/3");
    EXPECT_STREQ(hit["mac"].GetString(), "02:00:00:00:00:03");
    EXPECT_STREQ(hit["state"].GetString(), "online");
    EXPECT_STREQ(hit["description"].GetString(), "main street");
    EXPECT_TRUE(hit["goes_offline"].GetBool());
    EXPECT_EQ(hit["changes"].Size(), 0u);

    const auto whole = parsed(service.ponctl({"onu", "release", "1", "--all", "--dry-run", "-o", "json"}).out);
    ASSERT_EQ(whole.Size(), 1u);
    EXPECT_EQ(whole[0]["affects"].Size(), 3u);
    EXPECT_FALSE(whole[0]["affects"][2]["goes_offline"].GetBool());

    const auto offline = parsed(service.ponctl({"onu", "release", "1", "--offline", "--dry-run", "-o", "json"}).out);
    ASSERT_EQ(offline[0]["affects"].Size(), 1u);
    EXPECT_STREQ(offline[0]["affects"][0]["onu"].GetString(), "1/4");
    EXPECT_TRUE(service.settings().empty());
}

TEST(DryRun, SaysInJsonWhatChangesFromWhatToWhat)
{
    const FakeService service(by_command({{685, bytes(answer_to("BSP_CMD_ONU_FEC_GET", {{"mode", 3}}))},
                                          {384, rows(384, R"([{"onu_id":5,"mac":"02:00:00:00:00:05"}])")}}));
    const auto known =
        parsed(service.ponctl({"onu", "set", "1/5", "fec", "mode=enabled", "--dry-run", "-o", "json"}).out);
    const auto &change = known[0]["affects"][0]["changes"][0];
    EXPECT_STREQ(change["field"].GetString(), "mode");
    EXPECT_STREQ(change["before"].GetString(), "disabled");
    EXPECT_STREQ(change["after"].GetString(), "enabled");
    const FakeService described(rows(384, R"([{"onu_id":5,"mac":"02:00:00:00:00:05","description":"shop"}])"));
    const auto text = parsed(described.ponctl({"onu", "describe", "1", "5", "bakery", "--dry-run", "-o", "json"}).out);
    EXPECT_STREQ(text[0]["affects"][0]["changes"][0]["field"].GetString(), "description");
    EXPECT_STREQ(text[0]["affects"][0]["changes"][0]["before"].GetString(), "shop");
    EXPECT_STREQ(text[0]["affects"][0]["changes"][0]["after"].GetString(), "bakery");
    EXPECT_TRUE(described.settings().empty());
    const FakeService slas(by_command(
        {{470, bytes(answer_to("BSP_CMD_SLA_GET", {{"fixed", 50}, {"maximum", 9000}}))},
         {384, rows(384, R"([{"onu_id":3,"mac":"02:00:00:00:00:03"},{"onu_id":4,"mac":"02:00:00:00:00:04"}])")}}));
    const auto sla = parsed(slas.ponctl({"sla", "set", "1/3-4", "--fixed", "100", "--dry-run", "-o", "json"}).out);
    ASSERT_EQ(sla.Size(), 2u);
    ASSERT_EQ(sla[1]["affects"].Size(), 1u);
    EXPECT_STREQ(sla[1]["affects"][0]["onu"].GetString(), "1/4");
    EXPECT_STREQ(sla[1]["affects"][0]["changes"][0]["before"].GetString(), "50");
    EXPECT_STREQ(sla[1]["affects"][0]["changes"][0]["after"].GetString(), "100");
    // Nobody can be asked which multicast VLANs were there.
    const auto unknown = parsed(service
                                    .ponctl({"onu", "set", "1/5", "mc-vlan", "uni=1", "operation=add", "number=1",
                                             "vlan_1=7", "--dry-run", "-o", "json"})
                                    .out);
    EXPECT_TRUE(unknown[0]["affects"][0]["changes"][0]["before"].IsNull());
    EXPECT_STREQ(unknown[0]["affects"][0]["changes"][0]["after"].GetString(), "add");
}

TEST(DryRun, HidesPasswordsUnlessTheyAreWanted)
{
    const FakeService service;
    for (const std::vector<std::string> &command :
         {std::vector<std::string>{"loid", "add", "1", "shop17"}, {"auth", "set", "1", "hybrid", "--loid", "shop17"}})
        for (const char *format : {"table", "json", "hex"}) {
            std::vector<std::string> words = command;
            words.insert(words.end(), {"--password", "sesame", "--dry-run", "-o", format});
            const std::string out = service.ponctl(words).out;
            EXPECT_THAT(out, HasSubstr("***"));
            EXPECT_THAT(out, Not(HasSubstr("sesame")));
            EXPECT_THAT(out, Not(HasSubstr("736573616d65")));
            words.emplace_back("--secrets");
            EXPECT_THAT(service.ponctl(words).out, HasSubstr("sesame"));
        }
    EXPECT_TRUE(service.settings().empty());
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
