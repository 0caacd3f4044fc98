// These tests run ponctl sla as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

const auto stored = answer_to("BSP_CMD_SLA_GET",
                              {{"fixed", 1000}, {"assured", 2000}, {"maximum", 9000}, {"priority", 3}, {"weight", 5}});

TEST(SlaShow, IsBothDirectionsOfAnOnu)
{
    const FakeService service(
        by_command({{470, bytes(stored)}, {475, bytes(answer_to("BSP_CMD_SLA_DOWN_GET", {{"maximum", 70000}}))}}));
    EXPECT_EQ(service.ponctl({"sla", "show", "2", "0"}).out, "Upstream\n"
                                                             "FIELD    VALUE\n"
                                                             "fixed    1000 kbit/s\n"
                                                             "assured  2000 kbit/s\n"
                                                             "maximum  9000 kbit/s\n"
                                                             "priority 3\n"
                                                             "weight   5\n"
                                                             "\nDownstream\n"
                                                             "FIELD   VALUE\n"
                                                             "maximum 70000 kbit/s\n");
    EXPECT_EQ(service.received()[0].number("plat_port"), 2u);
    EXPECT_EQ(service.received()[0].number("plat_arg4"), 0u);
    const auto document = parsed(service.ponctl({"sla", "show", "2", "0", "-o", "json"}).out);
    EXPECT_EQ(document[0]["upstream"]["assured"].GetUint(), 2000u);
    EXPECT_EQ(document[0]["downstream"]["maximum"].GetUint(), 70000u);
}

TEST(SlaShow, IsTheSummaryAndTheViewsOfAPort)
{
    const FakeService service(by_command({{471, bytes(answer_to("BSP_CMD_SLA_PORT_GET", {{"free", 8000}}))},
                                          {472, rows(472, R"([{"onu_id":7,"fixed":10}])")},
                                          {476, rows(476, R"([{"onu_id":7,"max":20}])")}}));
    const auto document = parsed(service.ponctl({"sla", "show", "2", "-o", "json"}).out);
    EXPECT_EQ(document["summary"]["free"].GetUint(), 8000u);
    EXPECT_EQ(document["upstream"][0]["fixed"].GetUint(), 10u);
    EXPECT_EQ(document["downstream"][0]["max"].GetUint(), 20u);
}

TEST(SlaShow, OfAnOnuThatIsNotBoundSaysSoOnce)
{
    const FakeService service(status(4005));
    const Finished finished = service.ponctl({"sla", "show", "1", "5"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err, "ponctl: bsp_pon_onu_sla_get: status 4005 PON_ERR_NOT_BOUND: no ONU is bound to this id or "
                            "by this MAC address\n");
}

TEST(SlaSet, KeepsWhatIsNotGiven)
{
    const FakeService service(by_command({{470, bytes(stored)}}));
    EXPECT_EQ(service.ponctl({"sla", "set", "2", "7", "--assured", "500", "--max", "8000", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[1].number("plat_cmd"), 469u);
    EXPECT_EQ(received[1].number("plat_port"), 2u);
    EXPECT_EQ(received[1].number("plat_arg4"), 7u);
    for (const auto &[field, value] :
         {std::pair{"fixed", 1000u}, {"assured", 500u}, {"maximum", 8000u}, {"priority", 3u}, {"weight", 5u}})
        EXPECT_EQ(received[1].number(field), value) << field;
}

TEST(SlaSet, LeavesUpstreamAloneForDownstream)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"sla", "set", "2", "7", "--down-max", "6000", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received[0].number("plat_cmd"), 474u);
    EXPECT_EQ(received[0].number("maximum"), 6000u);
}

TEST(SlaSet, SetsNothingWhereWhatIsStoredIsNotKnown)
{
    const FakeService service(by_command({{470, status(4005)}}));
    EXPECT_EQ(service.ponctl({"sla", "set", "2", "7", "--fixed", "1", "--down-max", "6000", "--yes"}).code, 1);
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(SlaClear, SendsZerosForBothDirections)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"sla", "clear", "2", "7", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].number("plat_cmd"), 469u);
    EXPECT_EQ(received[0].number("maximum"), 0u);
    EXPECT_EQ(received[1].number("plat_cmd"), 474u);
}

TEST(SlaSet, RefusesWhatCannotBe)
{
    const FakeService service;
    const std::vector<std::pair<Words, std::string>> cases{
        {{"2", "7", "--yes"}, "nothing to set; give one of --fixed"},
        {{"2", "128", "--fixed", "1", "--yes"}, "ID: '128' is not a set of ONU ids from 0 to 127"},
        {{"2", "7", "--fixed", "much", "--yes"}, "--fixed: 'much' is not a number from 0"},
        {{"2", "7", "--fixed", "1"}, "--yes: missing; changing the bandwidth of ONU 2/7 needs it"},
    };
    for (const auto &[more, error] : cases) {
        Words words{"sla", "set"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2);
        EXPECT_THAT(finished.err, HasSubstr("ponctl: " + error));
    }
    EXPECT_TRUE(service.received().empty());
}

} // namespace
