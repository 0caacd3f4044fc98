// These tests check what a collector asks an OLT for, and what it makes of the answers.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/service.h"
#include "bsp_pon.h"
#include "collector/collector.h"
#include "fake_service.h"

namespace
{

using namespace front;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char *an_olt = R"([{"model":"M","pon_ports":2,"ge_ports":1}])";
constexpr const char *two_onus = R"([
    {"pon_port":1,"onu_id":5,"mac":"02:00:00:00:00:05","state":"online","distance":1200,"description":"shop"},
    {"pon_port":2,"mac":"02:00:00:00:00:09","state":"waiting"}])";

std::map<uint32_t, FakeService::Handler> answers()
{
    return {{BSP_CMD_VIEW_BASIC_INFO, rows(BSP_CMD_VIEW_BASIC_INFO, an_olt)},
            {BSP_CMD_VIEW_PORT_INFO, rows(BSP_CMD_VIEW_PORT_INFO, R"([{"pon_port":1},{"pon_port":2}])")},
            {BSP_CMD_VIEW_ONU_INFO_SNMP, rows(BSP_CMD_VIEW_ONU_INFO_SNMP, two_onus)},
            {BSP_CMD_VIEW_ONU_ALARM, rows(BSP_CMD_VIEW_ONU_ALARM, "[]")},
            {BSP_CMD_LOOP_INFO, rows(BSP_CMD_LOOP_INFO, "[]")},
            {BSP_CMD_VIEW_ONU_STATS_ALL,
             rows(BSP_CMD_VIEW_ONU_STATS_ALL, R"([{"pon_port":1,"onu_id":5,"up_frames":4294967296}])")},
            {BSP_CMD_DEBUG_PON_STATS, bytes(answer_to("BSP_CMD_DEBUG_PON_STATS", {{"in_octets", 7000000000}}))},
            {BSP_CMD_DEBUG_GE_STATS, bytes(answer_to("BSP_CMD_DEBUG_GE_STATS", {{"out_discards", 3}}))},
            {BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP, rows(BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP, "[]")},
            {BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, rows(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, "[]")},
            {BSP_CMD_VIEW_ONU_OPTICS_ALL,
             rows(BSP_CMD_VIEW_ONU_OPTICS_ALL, R"([{"pon_port":1,"onu_id":5,"olt_rx_power":-21.5}])")},
            {BSP_CMD_VIEW_SFP_INFO,
             rows(BSP_CMD_VIEW_SFP_INFO, R"([{"quantity":"temperature","value":40,"state":"normal"}])")},
            {BSP_CMD_VIEW_ONU_CAP_SNMP, rows(BSP_CMD_VIEW_ONU_CAP_SNMP, "[]")},
            {BSP_CMD_DEBUG_GE_MAC_GET, bytes(answer_to("BSP_CMD_DEBUG_GE_MAC_GET", {{"speed", 1000}, {"link", 1}}))},
            {BSP_CMD_DEBUG_PON_MAC_GET, bytes(answer_to("BSP_CMD_DEBUG_PON_MAC_GET", {{"sync_time", 64}, {"fec", 1}}))},
            {BSP_CMD_MAC_GET, rows(BSP_CMD_MAC_GET, R"([{"pon_port":2,"vlan":7,"mac":"02:00:00:00:00:77"}])")},
            {BSP_CMD_MAC_NNI_GET, rows(BSP_CMD_MAC_NNI_GET, R"([{"uplink":1,"vlan":1,"mac":"02:00:00:00:00:78"}])")}};
}

// A Collected is a collector with a service, at times that the test sets.
class Collected : public testing::Test
{
protected:
    Collected() { begin(answers()); }
    ~Collected() override { board_ipc_use_thread_directory(nullptr); }

    void begin(std::map<uint32_t, FakeService::Handler> handlers)
    {
        service.reset();
        service = std::make_unique<FakeService>(by_command(std::move(handlers)));
        board_ipc_use_thread_directory(service->folder().c_str());
    }
    void answer(uint32_t command, const FakeService::Handler &handler)
    {
        auto handlers = answers();
        handlers[command] = handler;
        begin(std::move(handlers));
    }
    std::shared_ptr<const Snapshot> read()
    {
        collector.read_due();
        return collector.snapshot();
    }
    static Collector::Periods ten_seconds()
    {
        Collector::Periods periods;
        periods.fill(10);
        return periods;
    }

    Steady now = 1'000'000;
    Collector collector{ten_seconds(), 1, [this] { return Now{now, now + 5}; }};
    std::unique_ptr<FakeService> service;
};

TEST_F(Collected, KnowsNothingBeforeItReads)
{
    const auto snapshot = collector.snapshot();
    EXPECT_EQ(snapshot->onus, nullptr);
    EXPECT_EQ(snapshot->state(Table::onus).generation, 0u);
    EXPECT_TRUE(snapshot->state(Table::onus).outdated(now));
}

TEST_F(Collected, HasTheRowsOfEveryTable)
{
    const auto snapshot = read();
    for (const TableKind &kind : table_kinds()) {
        EXPECT_EQ(snapshot->state(kind.table).generation, 1u) << kind.name;
        EXPECT_EQ(snapshot->state(kind.table).error, "") << kind.name;
        EXPECT_EQ(snapshot->state(kind.table).read, now + 5) << kind.name;
    }
    ASSERT_THAT(snapshot->onus->rows, SizeIs(2));
    const view::onu_info &onu = snapshot->onus->rows[0];
    EXPECT_EQ(onu.onu_id, 5u);
    EXPECT_EQ(onu.mac, (view::Mac{2, 0, 0, 0, 0, 5}));
    EXPECT_EQ(onu.state, "online");
    EXPECT_EQ(onu.description, "shop");
    EXPECT_EQ(snapshot->onus->rows[1].onu_id, std::nullopt);
    EXPECT_EQ(snapshot->stats->rows.at(0).up_frames, 4294967296u);
    EXPECT_EQ(snapshot->optics->rows.at(0).olt_rx_power, -21.5);
    EXPECT_EQ(snapshot->optics->rows.at(0).rx_power, std::nullopt);
    ASSERT_THAT(snapshot->counters->rows, SizeIs(3)) << "two PON ports and an uplink";
    EXPECT_EQ(snapshot->counters->rows[0].in_octets, 7000000000u);
    EXPECT_EQ(snapshot->counters->rows[2].out_discards, 3u);
    ASSERT_THAT(snapshot->modules->rows, SizeIs(3)) << "a quantity in each of three cages";
    EXPECT_EQ(snapshot->modules->rows[2].cage, 3u);
    ASSERT_THAT(snapshot->uplinks->rows, SizeIs(1));
    EXPECT_EQ(snapshot->uplinks->rows[0].speed, 1000u);
    EXPECT_TRUE(snapshot->uplinks->rows[0].link);
    ASSERT_THAT(snapshot->mpcp->rows, SizeIs(2));
    EXPECT_EQ(snapshot->mpcp->rows[1].sync_time, 64u);
    EXPECT_TRUE(snapshot->mpcp->rows[1].fec);
    ASSERT_THAT(snapshot->stations->rows, SizeIs(2)) << "of both sides, in the order of VLANs";
    EXPECT_FALSE(snapshot->stations->rows[0].pon);
    EXPECT_EQ(snapshot->stations->rows[1].port, 2u);
}

TEST_F(Collected, AsksOnceInAPeriodWhoeverReads)
{
    read();
    const size_t asked = service->received().size();
    now += 8'900; // periods are at most a tenth shorter
    for (int reader = 0; reader < 100; ++reader)
        EXPECT_NE(read()->onus, nullptr);
    EXPECT_EQ(service->received().size(), asked);
    now += 1'100;
    read();
    EXPECT_EQ(service->received().size(), 2 * asked);
}

TEST_F(Collected, ShowsATableBeforeTheNextIsRead)
{
    std::vector<uint64_t> onus, alarms; // generations
    collector.read_due([&] {
        onus.push_back(collector.snapshot()->state(Table::onus).generation);
        alarms.push_back(collector.snapshot()->state(Table::alarms).generation);
    });
    EXPECT_EQ(onus.size(), table_count - 1) << "before each but the first";
    EXPECT_THAT(onus, testing::Contains(1u));
    EXPECT_NE(onus, alarms);
}

TEST_F(Collected, NeverAsksForOneOnu)
{
    read();
    // Each of two ports: counters, upgrades and MPCP; each of three cages: a module; the uplink: counters and link; two
    // sides with a page of addresses; and nine tables as a whole.
    EXPECT_EQ(service->received().size(), 2u * 3 + 3 + 2 + 2 + 9);
}

TEST_F(Collected, KeepsTheLastRowsOfAnOltThatDoesNotAnswer)
{
    const auto before = read();
    service.reset();
    now += 60'000;
    const auto after = read();
    EXPECT_EQ(after->onus, before->onus);
    EXPECT_TRUE(after->state(Table::onus).stale());
    EXPECT_TRUE(after->state(Table::onus).outdated(now));
    EXPECT_EQ(after->state(Table::onus).error, "the OLT does not answer");
    EXPECT_FALSE(before->state(Table::onus).stale()) << "a snapshot never changes";
}

TEST_F(Collected, TellsHowOftenReadingFailed)
{
    service.reset();
    read();
    now += 2'000;
    read();
    EXPECT_EQ(collector.snapshot()->state(Table::onus).failed, 2u);
    begin(answers());
    now += 60'000;
    const auto snapshot = read();
    EXPECT_EQ(snapshot->state(Table::onus).failed, 0u);
    EXPECT_EQ(snapshot->state(Table::onus).failures, 2u);
    EXPECT_EQ(snapshot->state(Table::onus).generation, 1u);
}

TEST_F(Collected, AsksAnOltThatDoesNotAnswerForOneTableOnly)
{
    const FakeService::Handler no_answer = [](const board_request &, board_answer *answer) {
        board_answer_fail(answer, -10);
    };
    begin({{BSP_CMD_VIEW_BASIC_INFO, no_answer}, {BSP_CMD_VIEW_PORT_INFO, no_answer}});
    const auto snapshot = read();
    EXPECT_THAT(service->received(), SizeIs(1));
    for (const TableKind &kind : table_kinds())
        EXPECT_TRUE(snapshot->state(kind.table).stale()) << kind.name;
    begin(answers());
    now += 1'000;
    EXPECT_FALSE(read()->state(Table::capabilities).stale()) << "it asks for all tables once the OLT answers again";
}

TEST_F(Collected, TakesNoRowThatLacksAColumn)
{
    answer(BSP_CMD_VIEW_PORT_INFO, result(BSP_CMD_VIEW_PORT_INFO, R"([{"pon_port":1}])"));
    const auto snapshot = read();
    EXPECT_EQ(snapshot->ports, nullptr);
    EXPECT_EQ(snapshot->state(Table::ports).error, "row 1, mac: no text");
}

TEST_F(Collected, TakesNoValueOfAnotherType)
{
    answer(BSP_CMD_VIEW_PORT_INFO, rows(BSP_CMD_VIEW_PORT_INFO, R"([{"pon_port":-1}])"));
    EXPECT_EQ(read()->state(Table::ports).error, "row 1, pon_port: a number that is out of range");
    answer(BSP_CMD_VIEW_PORT_INFO, rows(BSP_CMD_VIEW_PORT_INFO, R"([{"pon_port":"one"}])"));
    now += 10'000;
    EXPECT_EQ(read()->state(Table::ports).error, "row 1, pon_port: no whole number");
    answer(BSP_CMD_VIEW_PORT_INFO, rows(BSP_CMD_VIEW_PORT_INFO, R"([{"pon_port":1,"mac":"here"}])"));
    now += 10'000;
    EXPECT_EQ(read()->state(Table::ports).error, "row 1, mac: no MAC address");
}

TEST_F(Collected, TakesNoRowTwice)
{
    answer(BSP_CMD_VIEW_PORT_INFO, rows(BSP_CMD_VIEW_PORT_INFO, R"([{"pon_port":1},{"pon_port":1}])"));
    EXPECT_EQ(read()->state(Table::ports).error, "row 2: not behind the row before it");
}

TEST_F(Collected, DoesNotBelieveInAnOltWithThousandsOfPorts)
{
    answer(BSP_CMD_VIEW_BASIC_INFO, rows(BSP_CMD_VIEW_BASIC_INFO, R"([{"pon_ports":506224}])"));
    EXPECT_EQ(read()->state(Table::olt).error, "row 1: more than 256 ports");
}

TEST_F(Collected, ReadsAllAddressesPageByPageAndEachOnce)
{
    answer(BSP_CMD_MAC_GET, [](const board_request &request, board_answer *answer) {
        uint32_t from = 0; // how many to pass over
        std::memcpy(&from, static_cast<const char *>(request.data) + 124, sizeof from);
        std::string page;
        // The last address of the first page comes again, as it does when another came before it meanwhile.
        for (uint32_t i = from == 0 ? 0 : from - 1; i < (from == 0 ? 100u : 150u); ++i) {
            char row[80];
            std::snprintf(row, sizeof row, R"(%s{"pon_port":1,"vlan":5,"mac":"02:00:00:00:00:%02x"})",
                          page.empty() ? "" : ",", i);
            page += row;
        }
        rows(BSP_CMD_MAC_GET, "[" + page + "]")(request, answer);
    });
    const auto snapshot = read();
    ASSERT_THAT(snapshot->stations->rows, SizeIs(151)) << snapshot->state(Table::stations).error;
}

TEST_F(Collected, SaysWhichStatusAnOltAnswersWith)
{
    answer(BSP_CMD_LOOP_INFO, status(4001));
    EXPECT_EQ(read()->state(Table::loops).error, "the OLT answers with status 4001");
}

TEST_F(Collected, AsksPortByPortWhereTextsOfAllWouldBeTooLong)
{
    auto handlers = answers();
    handlers[BSP_CMD_VIEW_ONU_INFO_SNMP] =
        rows(BSP_CMD_VIEW_ONU_INFO_SNMP, R"([{"pon_port":1,"onu_id":5,"mac":"02:00:00:00:00:05","state":"online"}])");
    handlers[BSP_CMD_VIEW_ONU_INFO_WEB] = [](const board_request &request, board_answer *answer) {
        const auto port = static_cast<const bsp_pon_msg *>(request.data)->pon_port;
        rows(BSP_CMD_VIEW_ONU_INFO_WEB, R"([{"pon_port":)" + std::to_string(port) +
                                            R"(,"onu_id":5,"mac":"02:00:00:00:00:05","state":"online",)"
                                            R"("description":"shop"}])")(request, answer);
    };
    begin(std::move(handlers));
    const auto snapshot = read();
    ASSERT_THAT(snapshot->onus->rows, SizeIs(2)) << snapshot->state(Table::onus).error;
    EXPECT_EQ(snapshot->onus->rows[1].description, "shop");
}

} // namespace
