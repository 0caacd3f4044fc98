// These tests run ponctl port as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

FakeService::Handler port_2()
{
    return by_command({{386, rows(386, R"([{"pon_port":1,"bound":4},{"pon_port":2,"bound":7}])")},
                       {377, bytes(pon_record({{12, 2}}))},
                       {471, bytes(answer_to("BSP_CMD_SLA_PORT_GET", {{"free", 8000}}))},
                       {487, bytes(answer_to("BSP_CMD_OPTICS_DIAG_GET", {{"temperature", 3300}, {"laser", 1}}))},
                       {243, bytes(answer_to("BSP_CMD_DEBUG_PON_MAC_GET", {{"registered", 6}}))},
                       {244, status(4001)}});
}

TEST(PortShow, IsAllThatTheServiceTellsOfThePort)
{
    const FakeService service(port_2());
    const Finished finished = service.ponctl({"port", "show", "2"});
    EXPECT_THAT(finished.out,
                AllOf(HasSubstr("BOUND   7\n"), HasSubstr("mode  loid-password\n"), HasSubstr("free     8000 kbit/s\n"),
                      HasSubstr("temperature    33.00 degC\n"), HasSubstr("laser          on\n"),
                      HasSubstr("registered         6\n"), Not(HasSubstr("PHY"))));
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr("bsp_debug_plat_pon_phy_get: status 4001"));
}

TEST(PortShow, IsOneObjectInJson)
{
    const FakeService service(port_2());
    const auto document = parsed(service.ponctl({"port", "show", "2", "-o", "json"}).out);
    EXPECT_EQ(document["port"]["bound"].GetUint(), 7u);
    EXPECT_EQ(document["authentication"]["mode"].GetUint(), 2u);
    EXPECT_DOUBLE_EQ(document["optics"]["temperature"].GetDouble(), 33);
    EXPECT_TRUE(document["phy"].IsNull());
}

TEST(PortShow, OfNoPortSaysSo)
{
    const FakeService service(port_2());
    const Finished finished = service.ponctl({"port", "show", "3"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err, "ponctl: there is no PON port 3\n");
}

const auto counters = answer_to("BSP_CMD_DEBUG_PON_STATS", {{"in_octets", 123456789012}, {"out_unicast", 7}});

TEST(PortStats, AreTheCountersOfAPonPortOrAGePort)
{
    const FakeService service(bytes(counters));
    EXPECT_THAT(service.ponctl({"port", "stats", "2"}).out, AllOf(HasSubstr("in_octets          123456789012 octets\n"),
                                                                  HasSubstr("frames_64          0 frames\n")));
    service.ponctl({"port", "stats", "--ge", "4"});
    const auto received = service.received();
    EXPECT_EQ(received.at(0).number("plat_cmd"), 237u);
    EXPECT_EQ(received.at(0).number("plat_port"), 2u);
    EXPECT_EQ(received.at(1).number("plat_cmd"), 238u);
    EXPECT_EQ(received.at(1).number("plat_port"), 4u);
}

TEST(PortStats, WatchedHaveARateFromTheSecondReadingOn)
{
    const FakeService service(bytes(counters));
    const std::string once = service.ponctl({"port", "stats", "2", "--watch", "0", "--count", "1"}).out;
    EXPECT_THAT(once, testing::ContainsRegex("out_unicast +7 frames +-\n"));
    const std::string twice = service.ponctl({"port", "stats", "2", "--watch", "0", "--count", "2"}).out;
    EXPECT_THAT(twice, testing::ContainsRegex("out_unicast +7 frames +0\\.0\n"));
    EXPECT_EQ(service.received().size(), 3u);
}

TEST(PortStats, AreDrawnAsTheirGrowth)
{
    const FakeService service(bytes(counters));
    Terminal terminal;
    service.ponctl({"port", "stats", "2", "--chart", "--watch", "0", "--count", "2"}, terminal.descriptor());
    const std::string text = terminal.text();
    EXPECT_THAT(text, AllOf(HasSubstr("port 2 in_octets 123456789012 octets"), HasSubstr("\n- a second"),
                            HasSubstr("\n0.0 a second"), HasSubstr("       0.0 |")));
}

TEST(PortStats, RefuseWhatCannotBe)
{
    const FakeService service;
    EXPECT_THAT(service.ponctl({"port", "stats"}).err, HasSubstr("which port? give either PORT or --ge PORT"));
    EXPECT_THAT(service.ponctl({"port", "stats", "1", "--ge", "1"}).err, HasSubstr("which port?"));
    EXPECT_THAT(service.ponctl({"port", "stats", "1", "--count", "2"}).err, HasSubstr("--count: goes with --watch"));
    EXPECT_TRUE(service.received().empty());
}

} // namespace
