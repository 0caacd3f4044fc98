// These tests run ponctl fdb as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;

// Returns a handler that answers with two rows of all that match.
FakeService::Handler two_of(uint32_t matching)
{
    return [matching](const board_request &, board_answer *answer) {
        const auto record = answer_to("BSP_CMD_MAC_GET", {{"matching", matching}});
        board_answer_data(answer, record.data(), static_cast<uint32_t>(record.size()));
        const std::string rows = whole_rows(485, R"([{"pon_port":1,"onu_id":5},{"pon_port":1,"onu_id":6}])");
        board_answer_result(answer, 485, rows.data(), static_cast<uint32_t>(rows.size()));
    };
}

TEST(FdbShow, AsksForWhatTheOptionsSay)
{
    const FakeService service(two_of(2));
    const Finished finished = service.ponctl({"fdb", "show", "3", "--llid", "4", "--uni", "2", "--vlan", "100", "--mac",
                                              "02:00:00:00:00:09", "--from", "10", "--count", "20"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.err, "");
    const Received query = service.received().at(0);
    EXPECT_EQ(query.number("plat_cmd"), 485u);
    for (const auto &[field, value] :
         {std::pair{"port", 3u}, {"llid", 4u}, {"uni", 2u}, {"vlan", 100u}, {"from", 10u}, {"count", 20u}})
        EXPECT_EQ(query.number(field), value) << field;
    EXPECT_EQ(query.number("mac"), 0x090000000002u);
}

TEST(FdbShow, SaysHowManyAreNotShown)
{
    const FakeService service(two_of(7));
    EXPECT_EQ(service.ponctl({"fdb", "show"}).err,
              "ponctl: 2 of 7 addresses are shown; --from and --count show others\n");
}

TEST(FdbShow, HasTheNetworkSideToo)
{
    const FakeService service;
    service.ponctl({"fdb", "show", "2", "--network"});
    EXPECT_EQ(service.received().at(0).number("plat_cmd"), 486u);
    EXPECT_THAT(service.ponctl({"fdb", "show", "--network", "--uni", "1"}).err, HasSubstr("--llid and --uni: "));
}

TEST(FdbAge, IsTheTimeAndTheNumberOfEntries)
{
    const FakeService service(bytes(answer_to("BSP_CMD_MAC_AGE_GET", {{"ageing", 300}, {"entries", 12}})));
    EXPECT_EQ(service.ponctl({"fdb", "age"}).out, "FIELD   VALUE\n"
                                                  "ageing  300 s\n"
                                                  "entries 12\n");
    EXPECT_EQ(parsed(service.ponctl({"fdb", "age", "-o", "json"}).out)["ageing"].GetUint(), 300u);
}

TEST(FdbFlush, SendsWhichEntriesOrAll)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"fdb", "flush", "--side", "pon", "--port", "3", "--vlan", "9", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"fdb", "flush", "--yes"}).code, 0);
    const auto received = service.received();
    EXPECT_EQ(received.at(0).number("side"), 1u);
    EXPECT_EQ(received.at(0).number("port"), 3u);
    EXPECT_EQ(received.at(0).number("vlan"), 9u);
    for (const char *field : {"side", "port", "llid", "vlan", "mac"})
        EXPECT_EQ(received.at(1).number(field), 0u) << field;
}

TEST(FdbFlush, NeedsAYesAndASideThatThereIs)
{
    const FakeService service;
    EXPECT_THAT(service.ponctl({"fdb", "flush"}).err, HasSubstr("--yes: missing; forgetting every address"));
    EXPECT_THAT(service.ponctl({"fdb", "flush", "--side", "east", "--yes"}).err,
                HasSubstr("--side: 'east' is not one of both, pon, network"));
    EXPECT_TRUE(service.received().empty());
}

TEST(FdbSet, SendsTheWholeConfiguration)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"fdb", "set", "60", "--learning", "off", "--port-limit", "99", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"fdb", "set", "0", "--yes"}).code, 0);
    const auto received = service.received();
    EXPECT_EQ(received.at(0).number("ageing"), 60u);
    EXPECT_EQ(received.at(0).number("learning"), 0u);
    EXPECT_EQ(received.at(0).number("port_limit"), 99u);
    EXPECT_EQ(received.at(1).number("learning"), 1u);
    EXPECT_EQ(received.at(1).number("port_limit"), 0u);
}

} // namespace
