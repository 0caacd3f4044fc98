// These tests run ponctl debug as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

TEST(DebugViews, EachAskForTheirOwn)
{
    const FakeService service;
    const std::vector<std::pair<std::string, uint32_t>> views{
        {"ge-phy", 239}, {"ingress", 241}, {"egress", 242},   {"pon-mac", 243},  {"pon-phy", 244},
        {"laser", 245},  {"ge-mac", 246},  {"xaui-mac", 247}, {"xaui-phy", 248}, {"mgmt", 259}};
    for (const auto &[view, code] : views) {
        EXPECT_EQ(service.ponctl({"debug", view, "3"}).code, 0) << view;
        EXPECT_EQ(service.received().back().number("plat_cmd"), code) << view;
        EXPECT_EQ(service.received().back().number("plat_port"), 3u) << view;
    }
}

TEST(DebugViews, AreOfAPonPortOrAGePortWhereBothHaveThem)
{
    const FakeService service;
    service.ponctl({"debug", "ingress", "3"});
    service.ponctl({"debug", "ingress", "3", "--ge"});
    EXPECT_EQ(service.received().at(0).number("selector"), 0u);
    EXPECT_EQ(service.received().at(1).number("selector"), 1u);
}

TEST(DebugViews, ShowRegistersInHexadecimal)
{
    const FakeService service(bytes(answer_to("BSP_CMD_DEBUG_GE_PHY_GET", {{"control", 0x1140}, {"status", 0x4d}})));
    const std::string out = service.ponctl({"debug", "ge-phy", "3"}).out;
    EXPECT_THAT(out, HasSubstr("control         0x1140\n"));
    EXPECT_THAT(out, HasSubstr("status          0x004d\n"));
    EXPECT_EQ(parsed(service.ponctl({"debug", "ge-phy", "3", "-o", "json"}).out)["control"].GetUint(), 0x1140u);
}

TEST(DebugViews, ShowWordsWhereNumbersStandForThem)
{
    const FakeService service(by_command({{245, bytes(answer_to("BSP_CMD_DEBUG_PON_LASER_GET", {{"state", 2}}))},
                                          {246, bytes(answer_to("BSP_CMD_DEBUG_GE_MAC_GET", {{"link", 1}}))}}));
    EXPECT_THAT(service.ponctl({"debug", "laser", "3"}).out, HasSubstr("state on in spite of TX disable\n"));
    EXPECT_THAT(service.ponctl({"debug", "ge-mac", "3"}).out, HasSubstr("link            up\n"));
}

TEST(DebugViews, HaveTheirBytes)
{
    const FakeService service(bytes(answer_to("BSP_CMD_DEBUG_MGMT_CFG_GET", {{"enabled", 1}})));
    EXPECT_THAT(service.ponctl({"debug", "mgmt", "1", "-o", "hex"}).out, HasSubstr("  124  01 "));
}

TEST(DebugGePhySet, TakesWordsOrTheByte)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"debug", "ge-phy-set", "3", "loopback", "full-duplex", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"debug", "ge-phy-set", "3", "0x11", "--yes"}).code, 0);
    EXPECT_EQ(service.received().at(0).number("control"), 0x41u);
    EXPECT_EQ(service.received().at(1).number("control"), 0x11u);
}

TEST(DebugGePhySet, RefusesWhatCannotBe)
{
    const FakeService service;
    for (const char *wrong : {"256", "fast", ""})
        EXPECT_EQ(service.ponctl({"debug", "ge-phy-set", "3", wrong, "--yes"}).code, 2) << wrong;
    EXPECT_THAT(service.ponctl({"debug", "ge-phy-set", "3", "reset"}).err, HasSubstr("--yes: missing; "));
    EXPECT_TRUE(service.received().empty());
}

TEST(DebugSwitches, SendStateAndPort)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"debug", "ctc-oam", "on", "3"}).code, 0);
    EXPECT_EQ(service.ponctl({"debug", "onu", "off"}).code, 0);
    const auto received = service.received();
    EXPECT_EQ(received.at(0).number("plat_cmd"), 261u);
    EXPECT_EQ(received.at(0).number("on"), 1u);
    EXPECT_EQ(received.at(0).number("pon_port"), 3u);
    EXPECT_EQ(received.at(1).number("plat_cmd"), 262u);
    EXPECT_EQ(received.at(1).number("on"), 0u);
    EXPECT_EQ(received.at(1).number("pon_port"), 0u);
}

TEST(DebugFdbDump, SendsThePortAndWhichEntries)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"debug", "fdb-dump", "3", "--entries", "static"}).code, 0);
    EXPECT_EQ(service.received().at(0).number("plat_port"), 3u);
    EXPECT_EQ(service.received().at(0).number("selector"), 2u);
}

} // namespace
