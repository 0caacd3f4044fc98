// These tests run ponctl alarm as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;

TEST(AlarmList, AsksForAllForAPortOrForAnOnu)
{
    const FakeService service(rows(388, R"([{"pon_port":1,"onu_id":5,"alarm":1,"name":"los"}])"));
    EXPECT_THAT(service.ponctl({"alarm", "list"}).out, HasSubstr("los"));
    EXPECT_EQ(service.ponctl({"alarm", "list", "3"}).code, 0);
    EXPECT_EQ(service.ponctl({"alarm", "list", "3", "5"}).code, 0);
    EXPECT_EQ(service.ponctl({"alarm", "list", "3", "02:11:22:33:44:55", "-o", "json"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 4u);
    const uint32_t ports[] = {0, 3, 3, 3}, ids[] = {0, 0, 5, 0};
    for (size_t index = 0; index < 4; ++index) {
        EXPECT_EQ(received[index].word(0), 388u);
        EXPECT_EQ(received[index].word(4), ports[index]);
        EXPECT_EQ(received[index].word(8), ids[index]);
    }
    EXPECT_EQ(received[3].mac(), "02:11:22:33:44:55");
}

TEST(AlarmList, CannotNameId0)
{
    EXPECT_EQ(ponctl({"alarm", "list", "3", "0"}).err,
              "ponctl: ONU: here id 0 means none; name that ONU by its MAC address\n");
}

TEST(AlarmClear, SelectsByOnuAndCode)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"alarm", "clear", "3", "5", "--alarm", "2"}).code, 0);
    EXPECT_EQ(service.ponctl({"alarm", "clear", "3"}).code, 0);
    EXPECT_EQ(service.ponctl({"alarm", "clear", "--alarm", "4"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[0].word(0), 389u);
    EXPECT_EQ(received[0].word(4), 3u);
    EXPECT_EQ(received[0].word(8), 5u);
    EXPECT_EQ(received[0].word(40), 2u);
    EXPECT_EQ(received[1].word(40), 0u);
    EXPECT_EQ(received[2].word(4), 0u);
}

TEST(AlarmClear, OfEverythingNeedsAYes)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"alarm", "clear"}).err,
              "ponctl: --yes: missing; clearing all alarms of all ports needs it "
              "when no terminal is there to ask\n");
    EXPECT_TRUE(service.received().empty());
    EXPECT_EQ(service.ponctl({"alarm", "clear", "--yes"}).code, 0);
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(AlarmClear, TellsAnIpcFailureFromAStatus)
{
    const FakeService service(status(4003));
    EXPECT_EQ(service.ponctl({"alarm", "clear", "99"}).code, 1);
    EXPECT_EQ(ponctl({"--socket-dir", "/nowhere", "alarm", "clear", "1"}).code, 3);
}

} // namespace
