// These tests run ponctl blacklist and ponctl whitelist, and the commands that put ONUs on the blacklist, as a process
// against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr const char *mac = "02:11:22:33:44:55";

TEST(Blacklist, AsksForOnePortOrAll)
{
    const FakeService service(rows(391, R"([{"pon_port":3,"id":1,"mac":"02:11:22:33:44:55","text":"bad optics"}])"));
    EXPECT_THAT(service.ponctl({"blacklist", "3"}).out, HasSubstr("   3  1 02:11:22:33:44:55 bad optics"));
    const auto document = parsed(service.ponctl({"blacklist", "-o", "json"}).out);
    EXPECT_STREQ(document[0]["text"].GetString(), "bad optics");
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].word(0), 391u);
    EXPECT_EQ(received[0].word(4), 3u);
    EXPECT_EQ(received[1].word(4), 0u);
}

TEST(Blacklist, SaysOnlyTheStatusWhereThereIsNoResult)
{
    const FakeService service(status(4003));
    const Finished finished = service.ponctl({"blacklist", "99"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err,
              "ponctl: bsp_pon_get_onu_blacklist: status 4003 PON_ERR_NO_PORT: the OLT has no such PON port\n");
}

TEST(Ids, AreThoseOfEitherList)
{
    const FakeService service(
        by_command({{390, bytes(pon_record({{432, 0xbe}}))}, {394, bytes(pon_record({{444, 1u << 31}}))}}));
    EXPECT_EQ(service.ponctl({"whitelist", "ids", "1"}).out, "PORT USED FREE IDS\n"
                                                             "   1    6  122 1-5,7\n");
    EXPECT_EQ(service.ponctl({"blacklist", "ids", "2", "--no-headings"}).out, "   2    1  127 127\n");
    EXPECT_EQ(service.received()[1].word(4), 2u);
}

TEST(Ids, AreAnArrayInJson)
{
    const FakeService service(bytes(pon_record({{432, 0x11}})));
    const auto document = parsed(service.ponctl({"whitelist", "ids", "1", "-o", "json"}).out);
    EXPECT_EQ(document["pon_port"].GetUint(), 1u);
    EXPECT_EQ(document["used"].GetUint(), 2u);
    EXPECT_EQ(document["free"].GetUint(), 126u);
    ASSERT_EQ(document["ids"].Size(), 2u);
    EXPECT_EQ(document["ids"][1].GetUint(), 4u);
}

TEST(Ids, OfAPortThatIsNoneEndWithOne)
{
    const FakeService service(status(4003));
    const Finished finished = service.ponctl({"blacklist", "ids", "99"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(service.ponctl({"blacklist", "ids"}).code, 2);
}

TEST(OnuReject, OfOneIdIsTheOperationForOne)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "reject", "1", "5", "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 1u);
    EXPECT_EQ(service.received()[0].word(0), 372u);
    EXPECT_EQ(service.received()[0].word(4), 1u);
    EXPECT_EQ(service.received()[0].word(8), 5u);
}

TEST(OnuReject, OfManyIdsIsABatch)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "reject", "1", "1-5", "7", "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 1u);
    EXPECT_EQ(service.received()[0].word(0), 373u);
    EXPECT_EQ(service.received()[0].word(4), 1u);
    EXPECT_EQ(service.received()[0].word(432), 0xbeu);
}

TEST(OnuReject, ByMacMayHaveAText)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "reject", "1", "--mac", mac, "--text", "bad optics", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "reject", "1", "--mac", mac, "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[0].word(0), 371u);
    EXPECT_EQ(service.received()[0].mac(), mac);
    EXPECT_EQ(service.received()[0].text(429), "bad optics");
    EXPECT_EQ(service.received()[1].text(429), "");
}

TEST(OnuReject, NeedsAYesAndOneKindOfName)
{
    const FakeService service;
    const std::vector<std::pair<Words, std::string>> cases{
        {{"5"}, "--yes: missing; rejecting ONU 5 of port 1 needs it when no terminal is there to ask"},
        {{"5,6"}, "--yes: missing; rejecting ONUs 5-6 of port 1 needs it when no terminal is there to ask"},
        {{"--yes"}, "which ONU? give ONU ids, as 1-5,7, or --mac MAC"},
        {{"5", "--mac", mac, "--yes"}, "--mac: not together with ids"},
        {{"5", "--text", "x", "--yes"}, "--text: goes with --mac alone"},
        {{"128", "--yes"}, "ID: '128' is not a set of ONU ids from 0 to 127, as 1-5,7"},
    };
    for (const auto &[more, error] : cases) {
        Words words{"onu", "reject", "1"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2);
        EXPECT_EQ(finished.err, "ponctl: " + error + "\n");
    }
    EXPECT_TRUE(service.received().empty());
}

TEST(OnuAllow, TakesOffByMacOrByIds)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "allow", "1", mac, "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "allow", "2", "--ids", "1,32", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].word(0), 374u);
    EXPECT_EQ(received[0].mac(), mac);
    EXPECT_EQ(received[1].word(0), 375u);
    EXPECT_EQ(received[1].word(4), 2u);
    EXPECT_EQ(received[1].word(432), 2u);
    EXPECT_EQ(received[1].word(436), 1u);
    for (const Words &words : {Words{"onu", "allow", "1"}, Words{"onu", "allow", "1", mac, "--ids", "1"}})
        EXPECT_EQ(service.ponctl(words).err, "ponctl: which ONU? give either MAC or --ids SET\n");
}

TEST(OnuAllow, PassesTheStatusOn)
{
    const FakeService service(status(4014));
    EXPECT_EQ(service.ponctl({"onu", "allow", "1", mac, "--yes"}).code, 1);
    EXPECT_EQ(ponctl({"--socket-dir", "/nowhere", "onu", "allow", "1", mac, "--yes"}).code, 3);
}

} // namespace
