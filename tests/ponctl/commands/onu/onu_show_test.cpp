// These tests run ponctl onu show as a process against a fake service.
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::Not;

const std::string two_onus =
    R"([{"pon_port":1,"onu_id":0,"mac":"02:00:00:00:00:10","state":"online","distance":1940},)"
    R"({"pon_port":1,"onu_id":5,"mac":"02:00:00:00:00:15","state":"offline","distance":null}])";

// Returns a handler that answers with an ONU's configuration as a text.
FakeService::Handler configuration(const std::string &json)
{
    std::vector<uint8_t> record(1044);
    std::memcpy(&record[20], json.data(), json.size());
    return bytes(record);
}

FakeService::Handler one_bound_onu()
{
    return by_command({{381, rows(381, two_onus)},
                       {709, configuration(whole_rows(709, R"([{"onu_id":5,"model":"E8010"}])"))},
                       {710, rows(710, R"([{"uni":1,"link":"1000FD"},{"uni":2,"link":"down"}])")}});
}

TEST(OnuShow, AsksForTheOnuAndThenForItsConfiguration)
{
    const FakeService service(one_bound_onu());
    EXPECT_EQ(service.ponctl({"onu", "show", "1", "5"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[0].call, BOARD_CALL_DGRAM_GET);
    EXPECT_EQ(received[0].word(0), 381u);
    EXPECT_EQ(received[0].word(4), 1u);
    EXPECT_EQ(received[0].word(8), 5u);
    for (size_t index : {1, 2}) {
        EXPECT_EQ(received[index].word(0), 1u);
        EXPECT_EQ(received[index].word(4), 5u);
    }
    EXPECT_EQ(received[1].word(16), 709u);
    EXPECT_EQ(received[2].word(16), 710u);
}

TEST(OnuShow, IsALineAFieldAndATableOfPorts)
{
    const FakeService service(one_bound_onu());
    const std::string out = service.ponctl({"onu", "show", "1", "5"}).out;
    EXPECT_THAT(out, HasSubstr("STATE        offline\n"));
    EXPECT_THAT(out, HasSubstr("DISTANCE (m) -\n"));
    EXPECT_THAT(out, HasSubstr("\nConfiguration\n"));
    EXPECT_THAT(out, testing::ContainsRegex("MODEL +E8010\n"));
    EXPECT_THAT(out, HasSubstr("\nUNI ports\n"));
    EXPECT_THAT(out, HasSubstr("1000FD"));
    EXPECT_THAT(out, Not(HasSubstr("02:00:00:00:00:10")));
}

TEST(OnuShow, IsOneJsonObject)
{
    const FakeService service(one_bound_onu());
    const auto onu = parsed(service.ponctl({"onu", "show", "1", "5", "-o", "json"}).out);
    EXPECT_STREQ(onu["information"]["mac"].GetString(), "02:00:00:00:00:15");
    EXPECT_TRUE(onu["information"]["distance"].IsNull());
    EXPECT_STREQ(onu["configuration"]["model"].GetString(), "E8010");
    EXPECT_EQ(onu["uni_ports"].Size(), 2u);
}

TEST(OnuShow, FindsId0AmongAllOfThePort)
{
    const FakeService service(one_bound_onu());
    const auto onu = parsed(service.ponctl({"onu", "show", "1", "0", "-o", "json"}).out);
    EXPECT_STREQ(onu["information"]["mac"].GetString(), "02:00:00:00:00:10");
    EXPECT_EQ(service.received()[1].word(4), 0u);
}

TEST(OnuShow, FindsAMacOnAnyPort)
{
    const FakeService service(one_bound_onu());
    EXPECT_EQ(service.ponctl({"onu", "show", "0", "02-00-00-00-00-15"}).code, 0);
    const auto received = service.received();
    EXPECT_EQ(received[0].word(4), 0u);
    EXPECT_EQ(received[0].mac(), "02:00:00:00:00:15");
    EXPECT_EQ(received[1].word(0), 1u);
    EXPECT_EQ(service.ponctl({"onu", "show", "0", "5"}).err,
              "ponctl: PORT: 0 stands for all ports; there, name the ONU by its MAC address\n");
}

TEST(OnuShow, OfOneThatWaitsHasNoConfiguration)
{
    const FakeService service(rows(381, R"([{"pon_port":1,"onu_id":null,"mac":"02:00:00:00:00:15"}])"));
    const auto onu = parsed(service.ponctl({"onu", "show", "1", "02:00:00:00:00:15", "-o", "json"}).out);
    EXPECT_TRUE(onu["configuration"].IsNull());
    EXPECT_TRUE(onu["uni_ports"].IsNull());
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(OnuShow, OfNoOnuSaysSoAndEndsWithOne)
{
    const FakeService service(rows(381, two_onus));
    const Finished finished = service.ponctl({"onu", "show", "1", "7"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "ponctl: there is no ONU 7 at port 1\n");
}

TEST(OnuShow, ShowsWhatThereIsWhereTheRestFails)
{
    const FakeService service(by_command({{381, rows(381, two_onus)}, {709, status(4005)}, {710, status(4005)}}));
    const Finished finished = service.ponctl({"onu", "show", "1", "5"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.out, HasSubstr("offline"));
    EXPECT_THAT(finished.err,
                HasSubstr("bsp_pon_onu_get_cfg_info: the service's status, which the operation drops, is"));
    EXPECT_THAT(finished.err, HasSubstr("bsp_pon_onu_get_portcfg_info: status 4005"));
}

TEST(OnuShow, EndsWithThreeWhenNobodyServes)
{
    EXPECT_EQ(ponctl({"--socket-dir", "/nowhere", "onu", "show", "1", "5"}).code, 3);
}

} // namespace
