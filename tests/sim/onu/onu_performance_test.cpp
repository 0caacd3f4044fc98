// These tests check performance monitoring of UNI ports, and the CATV port that is switched together with it.
#include "model/port/performance.h"

#include "model/olt/uni_config.h"
#include "plat.h"

namespace ponsim
{
namespace
{

using Counter = layout::At<uint64_t>;

constexpr ModelTime second = ms_per_second;
constexpr WantedSettings wanted{.seed = 1, .ports = 8, .arrivals = 4, .silent = 0};

// This OLT has four ONUs bound at each of its ports. The tests look at one of them.
struct Monitored : ServiceFixture {
    uint32_t pon_port = 1;
    uint32_t onu_id = 1;

    explicit Monitored(const std::string &file = {}) : ServiceFixture(wanted, file, true)
    {
        for (uint32_t number = 1; number <= 8; ++number)
            for (uint32_t index = 0; index < 4; ++index)
                EXPECT_EQ(send(record_of(BSP_CMD_ONU_BIND, number, index + 1, port(number).arrivals[index].mac)),
                          BSP_OK);
        choose([](const RemoteOnu &, const auto &links) { return std::ranges::count(links, true) >= 2; });
    }

    const Olt &olt() const { return simulator.olt(); }
    RemoteOnu onu() const { return find_onu(olt(), pon_port, onu_id).onu; }
    uint32_t unis() const { return static_cast<uint32_t>(onu().device.unis.size()); }
    // Returns whether each UNI port has a link, the first port first.
    std::vector<bool> links_of(const RemoteOnu &onu) const
    {
        const auto configs = default_configs(olt().seed(), onu.binding->mac, onu.device);
        std::vector<bool> links;
        for (size_t index = 0; index < configs.size(); ++index)
            links.push_back(link_of(onu.device.unis[index], configs[index]).has_value());
        return links;
    }
    // Makes the tests look at the first ONU that meets the condition.
    template <class Condition>
    void choose(Condition condition)
    {
        for (const PonPort &port : olt().ports())
            for (const RemoteOnu &each : onus_of(olt(), port))
                if (condition(each, links_of(each))) {
                    pon_port = port.number;
                    onu_id = each.onu_id;
                    return;
                }
        ADD_FAILURE() << "no such ONU";
    }

    Reply ask(uint32_t command, uint32_t uni = 0, uint8_t byte = 0)
    {
        bsp_onu_msg record = onu_record_of(command, pon_port, onu_id);
        record.onu_uni_port = static_cast<uint8_t>(uni);
        record.onu_data[0] = byte;
        return simulator.handle(message_of(BSP_MSG_ONU_INFO, record));
    }
    uint32_t turn(uint8_t on) { return ask(BSP_CMD_ONU_PERF_MONITOR_SET, 0, on).status; }
    void pass(ModelTime time) { simulator.advance(olt().now() + time); }
    // Switches monitoring on so that the ONU receives this at a whole second.
    void turn_on()
    {
        pass(second - oam_delay);
        EXPECT_EQ(turn(1), BSP_OK);
        pass(oam_delay);
    }

    template <class Field>
    Field value(uint32_t command, layout::At<Field> at, uint32_t uni = 0)
    {
        const Reply reply = ask(command, uni);
        EXPECT_EQ(reply.status, BSP_OK);
        return reply.answer ? layout::load(reply.answer->data(), at) : Field{};
    }
    uint64_t counter(Counter at, uint32_t uni, uint32_t command = BSP_CMD_ONU_PERF_CURRENT_GET)
    {
        return value(command, at, uni);
    }
    // Returns the sum over all UNI ports.
    uint64_t sum(Counter at, uint32_t command = BSP_CMD_ONU_PERF_CURRENT_GET)
    {
        uint64_t sum = 0;
        for (uint32_t uni = 1; uni <= unis(); ++uni)
            sum += counter(at, uni, command);
        return sum;
    }
    uint16_t monitoring(uint32_t uni)
    {
        return value(BSP_CMD_ONU_PERF_MONITOR_GET, layout::onu_perf_monitor::state, uni);
    }
};

namespace at = layout::onu_performance;

// Returns the sum in frames a second.
uint64_t sum_of(const PerFlow &rates)
{
    uint64_t sum = 0;
    for (uint64_t rate : rates)
        sum += rate / rate_unit;
    return sum;
}

TEST(OnuPerformance, OneRequestSwitchesMonitoringOfAllUniPortsAndCatv)
{
    Monitored fixture;
    fixture.choose([](const RemoteOnu &onu, const auto &) { return onu.device.type->pots_ports > 0; });
    for (const uint8_t on : {1, 0}) {
        ASSERT_EQ(fixture.ask(BSP_CMD_ONU_CATV_SET, 0, on).status, BSP_OK);
        fixture.pass(oam_delay);
        for (uint32_t uni = 1; uni <= fixture.unis(); ++uni)
            EXPECT_EQ(fixture.monitoring(uni), on) << uni;
        EXPECT_EQ(fixture.value(BSP_CMD_ONU_CATV_STATE_GET, layout::onu_catv_state::on), on);
    }
}

TEST(OnuPerformance, MonitoringBeginsWhenTheOnuHasTheRequest)
{
    Monitored fixture;
    fixture.pass(5 * second);
    ASSERT_EQ(fixture.turn(1), BSP_OK);
    EXPECT_TRUE(switched_on(fixture.olt(), fixture.onu(), Side::local));
    fixture.pass(oam_delay - 1);
    EXPECT_EQ(fixture.monitoring(1), 0);
    fixture.pass(1);
    EXPECT_EQ(fixture.monitoring(1), 1);
    EXPECT_EQ(fixture.value(BSP_CMD_ONU_PERF_MONITOR_GET, layout::onu_perf_monitor::since, 1), 5 * second + oam_delay);
    EXPECT_EQ(fixture.value(BSP_CMD_ONU_PERF_MONITOR_GET, layout::onu_perf_monitor::period, 1), 900u);
}

TEST(OnuPerformance, UniPortsTogetherCountTheTrafficOfTheirOnu)
{
    Monitored fixture;
    fixture.turn_on();
    const Rates rates = rates_of(fixture.olt().seed(), fixture.onu().binding->mac);
    for (uint64_t seconds : {1, 60, 899}) {
        fixture.pass(seconds * second - (fixture.olt().now() - second));
        // Each port rounds down the number of each kind of frame.
        const uint64_t rounded = fixture.unis() * flows.size();
        const uint64_t up = sum_of(rates.up) * seconds, down = sum_of(rates.down) * seconds;
        EXPECT_LE(fixture.sum(at::up_frames), up);
        EXPECT_LE(fixture.sum(at::down_frames), down);
        EXPECT_GE(fixture.sum(at::up_frames) + rounded, up);
        EXPECT_GE(fixture.sum(at::down_frames) + rounded, down);
    }
    EXPECT_EQ(fixture.sum(at::down_discarded), 0u) << "there is room for so little traffic";
}

TEST(OnuPerformance, UniPortsOfALoneOnuCountWhatItsPonPortReceives)
{
    Monitored fixture;
    for (uint32_t id = 1; id <= 4; ++id)
        if (id != fixture.onu_id) {
            ASSERT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE, fixture.pon_port, id)), BSP_OK);
        }
    fixture.turn_on();
    const auto received = [&] {
        const Counters counters = pon_counters(fixture.olt(), fixture.port(fixture.pon_port));
        return counters.in_frames() + counters.in_fcs_errors;
    };
    const uint64_t before = received();
    fixture.pass(600 * second);
    const uint64_t sent = fixture.sum(at::up_frames);
    EXPECT_LE(sent, received() - before);
    EXPECT_GE(sent + fixture.unis() * flows.size(), received() - before);
}

TEST(OnuPerformance, FramesAreThoseOfAllLengths)
{
    Monitored fixture;
    fixture.turn_on();
    fixture.pass(777777);
    const uint32_t every = at::down_octets_65_127.offset - at::down_octets_64.offset;
    for (uint32_t uni = 1; uni <= fixture.unis(); ++uni)
        for (const Counter way : {at::down_frames, at::up_frames}) {
            const uint32_t behind = way.offset - at::down_frames.offset;
            uint64_t frames = 0;
            for (uint32_t size = 0; size < 6; ++size)
                frames += fixture.counter({at::down_octets_64.offset + behind + size * every}, uni);
            EXPECT_EQ(fixture.counter(way, uni), frames);
            EXPECT_GE(fixture.counter({at::down_octets.offset + behind}, uni), frames * 64);
            EXPECT_LE(fixture.counter({at::down_octets.offset + behind}, uni), frames * 1518);
        }
}

TEST(OnuPerformance, ErroredFramesAreThoseOfAllKinds)
{
    Monitored fixture;
    fixture.choose([&](const RemoteOnu &onu, const auto &) {
        const std::vector<std::optional<LinkMode>> links = uni_links(fixture.olt(), onu);
        return std::ranges::find(links, LinkMode{10, false}) != links.end();
    });
    fixture.turn_on();
    fixture.pass(899 * second);
    EXPECT_GT(fixture.sum(at::up_errored), 0u);
    EXPECT_EQ(fixture.sum(at::up_errored), fixture.sum(at::up_crc_errored) + fixture.sum(at::up_fragments));
}

TEST(OnuPerformance, APortWithoutALinkCountsNothingAndEveryOtherDoes)
{
    Monitored fixture;
    fixture.choose([](const RemoteOnu &, const auto &links) {
        return std::ranges::count(links, true) >= 1 && std::ranges::count(links, false) >= 1;
    });
    fixture.turn_on();
    fixture.pass(60 * second);
    const std::vector<bool> links = fixture.links_of(fixture.onu());
    for (uint32_t uni = 1; uni <= fixture.unis(); ++uni)
        EXPECT_EQ(fixture.counter(at::up_octets, uni) > 0, links[uni - 1]) << uni;
}

TEST(OnuPerformance, APeriodBecomesHistoryWhenItEnds)
{
    Monitored fixture;
    fixture.turn_on();
    const uint64_t rate = sum_of(rates_of(fixture.olt().seed(), fixture.onu().binding->mac).up);
    fixture.pass(monitoring_period - 1);
    EXPECT_EQ(fixture.ask(BSP_CMD_ONU_PERF_HISTORY_GET, 1).status, PON_ERR_NOT_MONITORED);
    EXPECT_GT(fixture.sum(at::up_frames), 899 * rate);
    fixture.pass(1);
    EXPECT_EQ(fixture.sum(at::up_frames), 0u);
    EXPECT_EQ(fixture.sum(at::up_frames, BSP_CMD_ONU_PERF_HISTORY_GET), 900 * rate);
}

TEST(OnuPerformance, HistoryIsTheWholePeriodBeforeAllThroughTheNext)
{
    Monitored fixture;
    fixture.turn_on();
    fixture.pass(2 * monitoring_period);
    const Reply first = fixture.ask(BSP_CMD_ONU_PERF_HISTORY_GET, 1);
    fixture.pass(monitoring_period - 1);
    EXPECT_EQ(fixture.ask(BSP_CMD_ONU_PERF_HISTORY_GET, 1).answer, first.answer);
}

TEST(OnuPerformance, NothingIsCountedWhileMonitoringIsOff)
{
    Monitored fixture;
    EXPECT_EQ(fixture.ask(BSP_CMD_ONU_PERF_CURRENT_GET, 1).status, PON_ERR_NOT_MONITORED);
    fixture.turn_on();
    fixture.pass(monitoring_period + 60 * second);
    ASSERT_EQ(fixture.turn(0), BSP_OK);
    fixture.pass(monitoring_period);
    EXPECT_EQ(fixture.ask(BSP_CMD_ONU_PERF_CURRENT_GET, 1).status, PON_ERR_NOT_MONITORED);
    EXPECT_EQ(fixture.ask(BSP_CMD_ONU_PERF_HISTORY_GET, 1).status, PON_ERR_NOT_MONITORED);
    fixture.turn_on();
    EXPECT_EQ(fixture.sum(at::up_frames), 0u);
    EXPECT_EQ(fixture.ask(BSP_CMD_ONU_PERF_HISTORY_GET, 1).status, PON_ERR_NOT_MONITORED);
}

TEST(OnuPerformance, TurningOnAgainDoesNotBeginAnew)
{
    Monitored fixture;
    fixture.turn_on();
    fixture.pass(60 * second);
    const uint64_t frames = fixture.sum(at::up_frames);
    fixture.turn_on();
    EXPECT_GT(fixture.sum(at::up_frames), frames);
}

TEST(OnuPerformance, WhatCannotBeAskedOrToldIsRefused)
{
    Monitored fixture;
    EXPECT_EQ(fixture.turn(2), PON_ERR_BAD_RECORD);
    const std::initializer_list<uint32_t> of_unis{BSP_CMD_ONU_PERF_MONITOR_GET, BSP_CMD_ONU_PERF_CURRENT_GET,
                                                  BSP_CMD_ONU_PERF_HISTORY_GET};
    for (const uint32_t command : of_unis)
        for (const uint32_t uni : {0u, fixture.unis() + 1})
            EXPECT_EQ(fixture.ask(command, uni).status, PON_ERR_NO_UNI) << command;
    ASSERT_EQ(PlatAnswer(fixture, BSP_MSG_PLAT, PlatRecord(BSP_CMD_ONU_DEREGISTER, fixture.pon_port, fixture.onu_id))
                  .status(),
              BSP_OK);
    EXPECT_EQ(fixture.turn(1), PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.ask(BSP_CMD_ONU_CATV_STATE_GET).status, PON_ERR_OFFLINE);
    for (const uint32_t command : of_unis)
        EXPECT_EQ(fixture.ask(command, 1).status, PON_ERR_OFFLINE) << command;
}

TEST(OnuPerformance, AnOnuWithoutCatvPortMonitorsButHasNoCatvState)
{
    Monitored fixture;
    fixture.choose([](const RemoteOnu &onu, const auto &) { return onu.device.type->pots_ports == 0; });
    fixture.turn_on();
    EXPECT_EQ(fixture.monitoring(1), 1);
    EXPECT_EQ(fixture.ask(BSP_CMD_ONU_CATV_STATE_GET).status, PON_ERR_NOT_ABLE);
}

TEST(OnuPerformance, CountersSurviveTheService)
{
    const Folder folder;
    bsp_onu_msg record{};
    std::optional<std::string> answer;
    ModelTime asked = 0;
    {
        Monitored fixture(folder.file("state"));
        fixture.turn_on();
        fixture.pass(60 * second);
        record = onu_record_of(BSP_CMD_ONU_PERF_CURRENT_GET, fixture.pon_port, fixture.onu_id);
        record.onu_uni_port = 1;
        answer = fixture.simulator.handle(message_of(BSP_MSG_ONU_INFO, record)).answer;
        asked = fixture.olt().now();
    }
    ServiceFixture again({}, folder.file("state"));
    again.simulator.advance(asked);
    EXPECT_EQ(again.simulator.handle(message_of(BSP_MSG_ONU_INFO, record)).answer, answer);
}

TEST(OnuPerformance, FollowsFromTheSeed)
{
    Monitored one;
    Monitored other;
    for (Monitored *fixture : {&one, &other}) {
        fixture->turn_on();
        fixture->pass(1234567);
    }
    EXPECT_EQ(one.ask(BSP_CMD_ONU_PERF_CURRENT_GET, 2).answer, other.ask(BSP_CMD_ONU_PERF_CURRENT_GET, 2).answer);
}

} // namespace
} // namespace ponsim
