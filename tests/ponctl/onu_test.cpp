// ponctl onu and ponctl port, as a process, against a service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

FakeService::Handler rows(uint32_t key, std::string json)
{
    return [key, json = std::move(json)](const board_request &, board_answer *answer) {
        board_answer_result(answer, key, json.data(), static_cast<uint32_t>(json.size()));
    };
}

TEST(OnuList, AsksForOnePortOrAll)
{
    const FakeService service(rows(384, "[]"));
    EXPECT_EQ(service.ponctl({"onu", "list", "3"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "list"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].word(0), 384u);
    EXPECT_EQ(received[0].word(4), 3u);
    EXPECT_EQ(received[1].word(4), 0u);
}

TEST(OnuList, IsATableOrTheRowsAsJson)
{
    const FakeService service(
        rows(384, R"([{"pon_port":1,"onu_id":null,"mac":"00:11:22:33:44:55","state":"waiting","supported":true}])"));
    EXPECT_THAT(service.ponctl({"onu", "list"}).out, HasSubstr("\n   1  - 00:11:22:33:44:55 waiting yes"));
    rapidjson::Document document;
    document.Parse(service.ponctl({"onu", "list", "-o", "json"}).out.c_str());
    ASSERT_TRUE(document.IsArray());
    EXPECT_STREQ(document[0]["state"].GetString(), "waiting");
}

TEST(OnuBind, TakesTheGivenIdOrLetsTheServicePickOne)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "bind", "1", "00:11:22:33:44:55", "--id", "5", "--mode", "2"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "bind", "1", "00:11:22:33:44:55", "--text-a", "name"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].word(0), 365u);
    EXPECT_EQ(received[0].word(8), 5u);
    EXPECT_EQ(received[0].word(40), 2u);
    EXPECT_EQ(received[1].word(0), 364u);
    EXPECT_STREQ(reinterpret_cast<const char *>(&received[1].record[237]), "name");
}

TEST(OnuRelease, NamesTheOnuByIdByMacOrByBoth)
{
    const FakeService service;
    const Words release{"onu", "release", "1"};
    for (const Words &which :
         {Words{"--id", "5"}, Words{"--mac", "02:11:22:33:44:55"}, Words{"--id", "5", "--mac", "02:11:22:33:44:55"}}) {
        Words words = release;
        words.insert(words.end(), which.begin(), which.end());
        EXPECT_EQ(service.ponctl(words).code, 0);
    }
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    const uint32_t ids[] = {5, 0, 5};
    const uint8_t first_bytes[] = {0, 2, 2};
    for (size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(received[index].word(0), 366u);
        EXPECT_EQ(received[index].word(8), ids[index]);
        EXPECT_EQ(received[index].record[17], first_bytes[index]);
    }
}

TEST(OnuRelease, OfManyNeedsAYes)
{
    const FakeService service;
    for (const char *which : {"--all", "--offline"}) {
        const Finished refused = service.ponctl({"onu", "release", "1", which});
        EXPECT_EQ(refused.code, 2);
        EXPECT_THAT(refused.err, HasSubstr("ponctl: --yes: missing; releasing all"));
    }
    EXPECT_TRUE(service.received().empty());
    EXPECT_EQ(service.ponctl({"onu", "release", "1", "--all", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "release", "1", "--offline", "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[0].word(0), 369u);
    EXPECT_EQ(service.received()[1].word(0), 370u);
}

TEST(OnuRelease, OfNoneOrOfTwoKindsIsRefused)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "release", "1"}).err,
              "ponctl: which ONU? give --id N, --mac MAC or both, or --offline or --all\n");
    EXPECT_EQ(service.ponctl({"onu", "release", "1", "--all", "--id", "5", "--yes"}).err,
              "ponctl: --all and --offline stand alone: not with each other, not with --id or --mac\n");
    EXPECT_TRUE(service.received().empty());
}

TEST(PortList, ShowsAPortARow)
{
    const FakeService service(rows(386, R"([{"pon_port":1,"bound":0},{"pon_port":2,"bound":7}])"));
    EXPECT_EQ(service.ponctl({"port", "list", "--no-headings"}).out, "   1     0      -       -       -       -\n"
                                                                     "   2     7      -       -       -       -\n");
}

} // namespace
