// These tests check the tables of all ONUs, and of the OLT and its PON ports.
#include "views/bulk.h"

#include <functional>

#include "model/onu/ipv4.h"
#include "model/port/performance.h"
#include "plat.h"
#include "rows.h"

namespace ponsim
{
namespace
{

constexpr size_t small_result = 10240;
constexpr size_t longest_text = 1023;
constexpr uint32_t most_onus = max_ports * onus_per_port;
constexpr WantedSettings four_a_port{.seed = 1, .ports = 8, .arrivals = 4, .silent = 0};

// At each port of this OLT four ONUs have arrived, and three of them are bound. An ONU that has not arrived is bound to
// id 4.
struct Bulk : ServiceFixture {
    explicit Bulk(const WantedSettings &wanted = four_a_port) : ServiceFixture(wanted)
    {
        for (const PonPort &each : simulator.olt().ports()) {
            for (uint32_t onu_id = 1; onu_id <= 3; ++onu_id)
                send(record_of(BSP_CMD_ONU_BIND, each.number, onu_id, each.arrivals[onu_id - 1].mac));
            send(record_of(BSP_CMD_ONU_BIND, each.number, 4, stranger(4, static_cast<uint8_t>(each.number))));
        }
    }
    const Olt &olt() const { return simulator.olt(); }
    rapidjson::Document rows(uint32_t command, uint32_t pon_port = 0) { return parse(view(command, pon_port)); }
    // Sends a record of a remote ONU.
    Reply exchange(uint32_t channel, bsp_onu_msg record, catalogue::Call call)
    {
        Message message = message_of(channel, record);
        message.call = call;
        return simulator.handle(message);
    }
    Reply ask_onu(uint32_t channel, uint32_t command, uint32_t pon_port, uint32_t onu_id)
    {
        return exchange(channel, onu_record_of(command, pon_port, onu_id), catalogue::Call::get);
    }
    void monitor_all()
    {
        for (const PonPort &each : olt().ports())
            for (uint32_t onu_id = 1; onu_id <= 3; ++onu_id) {
                bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_PERF_MONITOR_SET, each.number, onu_id);
                record.onu_data[0] = 1;
                EXPECT_EQ(exchange(BSP_MSG_ONU_INFO, record, catalogue::Call::set).status, BSP_OK);
            }
    }
    void pass(ModelTime time) { simulator.advance(olt().now() + time); }
    static double number(const rapidjson::Value &row, const char *column) { return row[column].GetDouble(); }
};

template <class Field>
Field value_at(const Reply &reply, layout::At<Field> at)
{
    EXPECT_EQ(reply.status, BSP_OK);
    return layout::load(reply.answer.value().data(), at);
}

TEST(OnuOpticsTable, HasWhatTheOnusTellOneByOne)
{
    namespace at = layout::onu_optics;
    Bulk fixture;
    fixture.pass(12345);
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_OPTICS, 3);
    ASSERT_EQ(rows.Size(), 4u);
    for (uint32_t onu_id = 1; onu_id <= 3; ++onu_id) {
        const auto &row = rows[onu_id - 1];
        const Reply answered = fixture.ask_onu(BSP_MSG_ONU_CFG, BSP_CMD_ONU_OPTICS_GET, 3, onu_id);
        EXPECT_EQ(row["onu_id"].GetUint(), onu_id);
        EXPECT_EQ(row["mac"].GetString(), text::mac_text(fixture.port(3).bindings[onu_id]->mac));
        EXPECT_NEAR(Bulk::number(row, "temperature"), value_at(answered, at::temperature) / 256.0, 0.01);
        EXPECT_NEAR(Bulk::number(row, "voltage"), value_at(answered, at::voltage) / 10000.0, 0.001);
        EXPECT_NEAR(Bulk::number(row, "bias"), value_at(answered, at::bias) / 500.0, 0.01);
        EXPECT_EQ(Bulk::number(row, "tx_power"), centi_dbm(value_at(answered, at::launch_power)) / 100.0);
        EXPECT_EQ(Bulk::number(row, "rx_power"), centi_dbm(value_at(answered, at::received_power)) / 100.0);
    }
}

TEST(OnuOpticsTable, TheOltReceivesWhatItsRssiReadingTells)
{
    Bulk fixture;
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_OPTICS, 2);
    for (uint32_t onu_id = 1; onu_id <= 3; ++onu_id) {
        const PlatAnswer rssi(fixture, BSP_MSG_PLAT, {BSP_CMD_OPTICS_RSSI_GET, 2, onu_id});
        ASSERT_EQ(rssi.status(), BSP_OK);
        EXPECT_EQ(Bulk::number(rows[onu_id - 1], "olt_rx_power"),
                  rssi.get(layout::optics_rssi::received_power) / 100.0);
    }
}

TEST(OnuOpticsTable, AnOnuThatIsNotOnlineHasNoValues)
{
    Bulk fixture;
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_OPTICS, 1);
    for (const char *column : {"temperature", "voltage", "bias", "tx_power", "rx_power", "olt_rx_power"}) {
        EXPECT_FALSE(rows[2][column].IsNull()) << column;
        EXPECT_TRUE(rows[3][column].IsNull()) << column;
    }
}

TEST(OnuOpticsTable, ThatOfTheOltIsThoseOfItsPortsInOrder)
{
    Bulk fixture;
    std::string all;
    for (uint32_t pon_port = 1; pon_port <= 8; ++pon_port) {
        const std::string text = fixture.view(BSP_CMD_VIEW_ONU_OPTICS, pon_port);
        all += (all.empty() ? "" : ",") + text.substr(1, text.size() - 2);
    }
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_ONU_OPTICS_ALL), '[' + all + ']');
}

TEST(OnuOpticsTable, APortThatDoesNotExistIsSaid)
{
    Bulk fixture;
    for (const uint32_t pon_port : {0, 9}) {
        const Reply reply = fixture.ask(record_of(BSP_CMD_VIEW_ONU_OPTICS, pon_port));
        EXPECT_EQ(reply.status, PON_ERR_NO_PORT);
        EXPECT_EQ(reply.result, std::nullopt);
    }
}

TEST(OnuStatsTable, CountsNothingWhereNothingIsMonitored)
{
    Bulk fixture;
    fixture.pass(10 * ms_per_second);
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_STATS_ALL);
    for (const auto &row : rows.GetArray())
        for (const char *column : {"counted", "up_frames", "up_octets", "up_errors", "down_frames", "down_discarded"})
            EXPECT_TRUE(row[column].IsNull()) << column;
}

TEST(OnuStatsTable, HasTheSumOfWhatTheUniPortsCount)
{
    namespace at = layout::onu_performance;
    const std::pair<const char *, layout::At<uint64_t>> counters[] = {
        {"up_frames", at::up_frames},     {"up_octets", at::up_octets},     {"up_errors", at::up_errored},
        {"down_frames", at::down_frames}, {"down_octets", at::down_octets}, {"down_discarded", at::down_discarded},
    };
    Bulk fixture;
    fixture.monitor_all();
    fixture.pass(oam_delay + 100 * ms_per_second);
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_STATS_ALL);
    ASSERT_EQ(rows.Size(), 32u);
    EXPECT_EQ(rows[5]["counted"].GetDouble(), 100);
    for (const auto &[column, at] : counters) {
        uint64_t sum = 0;
        for (uint32_t uni = 1; uni <= find_onu(fixture.olt(), 2, 2).onu.device.unis.size(); ++uni) {
            bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_PERF_CURRENT_GET, 2, 2);
            record.onu_uni_port = static_cast<uint8_t>(uni);
            sum += value_at(fixture.exchange(BSP_MSG_ONU_INFO, record, catalogue::Call::get), at);
        }
        EXPECT_EQ(rows[5][column].GetDouble(), static_cast<double>(sum)) << column;
    }
    EXPECT_GT(rows[5]["up_frames"].GetDouble(), 0);
}

TEST(OnuStatsTable, CountsOnOverTheEndOfAMonitoringPeriod)
{
    Bulk fixture;
    fixture.monitor_all();
    fixture.pass(oam_delay + monitoring_period - ms_per_second);
    const double before = fixture.rows(BSP_CMD_VIEW_ONU_STATS_ALL)[0]["up_frames"].GetDouble();
    fixture.pass(2 * ms_per_second);
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_STATS_ALL);
    EXPECT_GT(rows[0]["up_frames"].GetDouble(), before);
    EXPECT_EQ(rows[0]["counted"].GetDouble(), 901);
}

TEST(OnuStatsTable, AnOnuThatMonitorsAndGoesOfflineTellsNothing)
{
    Bulk fixture;
    fixture.monitor_all();
    fixture.pass(oam_delay);
    OnuRecord dead;
    dead.powered = false;
    Change change;
    change.put<OnuRecord>({1, fixture.port(1).bindings[1]->mac}, dead);
    fixture.simulator.change(change);
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_STATS_ALL);
    for (const char *column : {"up_load", "counted", "up_frames"}) {
        EXPECT_TRUE(rows[0][column].IsNull()) << column;
        EXPECT_FALSE(rows[1][column].IsNull()) << column;
    }
}

TEST(OnuStatsTable, TheFramesOfAPortsOnusAreThoseThatItReceives)
{
    Bulk fixture;
    fixture.monitor_all();
    fixture.pass(oam_delay);
    const auto received = [&] {
        const Counters counters = pon_counters(fixture.olt(), fixture.port(1));
        return counters.in_frames() + counters.in_fcs_errors;
    };
    const uint64_t before = received();
    fixture.pass(1000 * ms_per_second);
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_STATS_ALL);
    double sum = 0;
    for (const auto &row : rows.GetArray())
        if (row["pon_port"].GetUint() == 1 && !row["up_frames"].IsNull()) sum += row["up_frames"].GetDouble();
    // Both numbers are rounded down, for each kind of frame separately.
    EXPECT_NEAR(sum, static_cast<double>(received() - before), 3 * flows.size());
    EXPECT_GT(sum, 1000);
}

TEST(OnuStatsTable, TheLoadsOfAPortsOnusAreThatOfThePort)
{
    Bulk fixture;
    const auto ports = fixture.rows(BSP_CMD_VIEW_PORT_INFO);
    const auto onus = fixture.rows(BSP_CMD_VIEW_ONU_STATS_ALL);
    for (const char *column : {"up_load", "down_load"}) {
        double sum = 0;
        for (const auto &row : onus.GetArray())
            if (row["pon_port"].GetUint() == 4 && !row[column].IsNull()) sum += row[column].GetDouble();
        EXPECT_NEAR(ports[3][column].GetDouble(), sum, 0.01);
        EXPECT_GT(sum, 0);
    }
}

TEST(OnuStatsTable, NothingComesDownWhileTheUplinkIsDown)
{
    Bulk fixture;
    PhyControl down;
    down.bits |= PhyControl::power_down;
    const PlatAnswer set(fixture, BSP_MSG_DEBUG,
                         PlatRecord(BSP_CMD_DEBUG_GE_PHY_SET, 2).put(layout::ge_phy_control::control, down.bits));
    ASSERT_EQ(set.status(), BSP_OK);
    const auto rows = fixture.rows(BSP_CMD_VIEW_ONU_STATS_ALL);
    EXPECT_GT(rows[0]["down_load"].GetDouble(), 0);
    EXPECT_EQ(rows[4]["down_load"].GetDouble(), 0); // port 2, which goes through GE port 2
    EXPECT_GT(rows[4]["up_load"].GetDouble(), 0);
}

TEST(PortInfo, CountsAsTheBaseInformationDoes)
{
    Bulk fixture;
    const auto rows = fixture.rows(BSP_CMD_VIEW_PORT_INFO);
    const auto base = fixture.rows(BSP_CMD_VIEW_BASE_INFO_WEB);
    ASSERT_EQ(rows.Size(), 8u);
    for (uint32_t index = 0; index < 8; ++index)
        for (const char *column : {"pon_port", "bound", "online", "waiting"})
            EXPECT_EQ(rows[index][column].GetUint(), base[index][column].GetUint()) << column;
    EXPECT_EQ(rows[0]["bound"].GetUint(), 4u);
    EXPECT_EQ(rows[0]["online"].GetUint(), 3u);
    EXPECT_EQ(rows[0]["waiting"].GetUint(), 1u);
}

TEST(PortInfo, APortWithoutLightIsDark)
{
    Bulk fixture;
    ModuleRecord dark = fixture.olt().module(5)->record();
    dark.tx_disabled = true;
    Change change;
    change.put<ModuleRecord>(5, dark);
    fixture.simulator.change(change);
    fixture.pass(50); // which the GATE time-out takes
    const auto rows = fixture.rows(BSP_CMD_VIEW_PORT_INFO);
    EXPECT_TRUE(rows[3]["laser"].GetBool());
    EXPECT_GT(rows[3]["tx_power"].GetDouble(), 0);
    EXPECT_FALSE(rows[4]["laser"].GetBool());
    EXPECT_EQ(rows[4]["tx_power"].GetDouble(), -40);
    EXPECT_EQ(rows[4]["online"].GetUint(), 0u);
    EXPECT_EQ(rows[4]["up_load"].GetDouble(), 0);
}

TEST(BasicInfo, IsOneRowOfTheWholeOlt)
{
    Bulk fixture;
    fixture.pass(1500);
    const auto rows = fixture.rows(BSP_CMD_VIEW_BASIC_INFO);
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_EQ(rows[0]["pon_ports"].GetUint(), 8u);
    EXPECT_EQ(rows[0]["uptime"].GetDouble(), 1.5);
    EXPECT_EQ(rows[0]["bound"].GetUint(), 32u);
    EXPECT_EQ(rows[0]["online"].GetUint(), 24u);
    EXPECT_EQ(rows[0]["waiting"].GetUint(), 8u);
}

TEST(BasicInfo, AnotherOltHasAnotherSerialNumber)
{
    const auto serial = [](uint64_t seed) {
        ServiceFixture fixture({.seed = seed, .ports = 1, .arrivals = 0, .silent = 0});
        const auto rows = parse(fixture.view(BSP_CMD_VIEW_BASIC_INFO));
        return std::string(rows[0]["serial"].GetString());
    };
    EXPECT_EQ(serial(1).size(), 12u);
    EXPECT_EQ(serial(1), serial(1));
    EXPECT_NE(serial(1), serial(2));
}

std::string all_onus(ServiceFixture &fixture)
{
    const Reply reply = fixture.ask(record_of(BSP_CMD_ALL_ONU_INFO));
    EXPECT_EQ(reply.status, BSP_OK);
    EXPECT_EQ(reply.answer.value().size(), sizeof(bsp_pon_msg_ext));
    EXPECT_EQ(reply.answer->back(), '\0');
    return reply.answer->c_str() + layout::all_onu_info::text.offset;
}

TEST(AllOnus, AreALineAPortAndOneForAll)
{
    Bulk fixture({.seed = 1, .ports = 2, .arrivals = 6, .silent = 0});
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 2, 1));
    EXPECT_EQ(all_onus(fixture), "port 1: 4 bound, 3 online, 3 waiting\n"
                                 "port 2: 3 bound, 2 online, 4 waiting\n"
                                 "total: 7 bound, 5 online, 7 waiting\n");
}

// Returns as many ONUs as there can be, all online.
Change full()
{
    Change kept;
    const Olt olt({.seed = 1, .ports = max_ports, .arrivals = onus_per_port, .silent = 0});
    for (const PonPort &port : olt.ports())
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
            kept.put<Binding>({port.number, onu_id}, binding_of(port.arrivals[onu_id].mac));
    return kept;
}

struct Full : ServiceFixture {
    Full() : ServiceFixture({.seed = 1, .ports = max_ports, .arrivals = onus_per_port, .silent = 0}, full()) {}
};

TEST(AllOnus, FitForAFullOlt)
{
    Full fixture;
    const std::string text = all_onus(fixture);
    EXPECT_LE(text.size(), longest_text);
    EXPECT_TRUE(text.ends_with("total: 2048 bound, 2048 online, 0 waiting\n")) << text;
    // When as many ONUs wait as are bound, each line has at most two characters more, and the last line three.
    EXPECT_LE(text.size() + 2 * max_ports + 3, longest_text);
}

TEST(AllOnus, ATableOfAFullOltHasARowForEach)
{
    Full fixture;
    for (const uint32_t command : {BSP_CMD_VIEW_ONU_OPTICS_ALL, BSP_CMD_VIEW_ONU_STATS_ALL}) {
        const std::string text = fixture.view(command);
        EXPECT_LE(text.size(), max_result);
        EXPECT_EQ(parse(text).Size(), most_onus);
    }
    EXPECT_EQ(parse(fixture.view(BSP_CMD_VIEW_ONU_OPTICS, 16)).Size(), onus_per_port);
}

constexpr Mac some_mac{0xff, 0xff, 0xff, 0xff, 0xff, 0xff};
constexpr uint64_t longest_count = (uint64_t{1} << 53) - 1; // the greatest that JSON readers take exactly
constexpr Load longest_load{longest_count, longest_count};
constexpr Readings longest_readings{-0x8000, 0xffff, 0xffff, 1, 1};
constexpr uint32_t longest_number = 0xffffffff;
constexpr OnuNumbers longest_numbers{longest_number, longest_number, longest_number};

TEST(Bounds, TheOpticsOf2048OnusFitWithTheLongestValues)
{
    const OnuOptics row{max_ports, 127, some_mac, OnuOptics::Measured{longest_readings, 1}};
    EXPECT_LE(onu_optics_table(std::vector(most_onus, row)).size(), max_result);
}

TEST(Bounds, TheStatisticsOf2048OnusFitWithTheLongestValues)
{
    const OnuStats::Counts counts{longest_count, longest_count, longest_count, longest_count,
                                  longest_count, longest_count, longest_count};
    const OnuStats row{max_ports, 127, some_mac, longest_load, counts};
    EXPECT_LE(onu_stats_table(std::vector(most_onus, row)).size(), max_result);
}

TEST(Bounds, SixteenPortsFitWithTheLongestValues)
{
    const PortRow row{longest_number, some_mac, longest_number, false, longest_readings, longest_numbers, longest_load};
    EXPECT_LE(ports_table(std::vector(max_ports, row)).size(), small_result);
}

// A Setting is what a request sets at an ONU, or at its first UNI port, with the bit that shows it.
struct Setting {
    uint32_t bit;
    uint32_t channel;
    uint32_t command;
    std::function<void(OnuBlock &)> put;
    uint32_t llids = 0;
};

const Setting settings[] = {
    {0, BSP_MSG_ONU_CFG, BSP_CMD_ONU_MGMT_SET,
     [](OnuBlock &block) {
         put_ipv4(block, layout::onu_mgmt_set::address, 0x0a000002);
         put_ipv4(block, layout::onu_mgmt_set::mask, 0xffffff00);
         block.put(layout::onu_mgmt_set::mode, 1);
     }},
    {1, BSP_MSG_ONU_CFG, BSP_CMD_ONU_FEC_SET, [](OnuBlock &block) { block.put(layout::onu_fec_set::mode, 2); }},
    {2, BSP_MSG_ONU_INFO, BSP_CMD_ONU_TIME_SET,
     [](OnuBlock &block) {
         put_ipv4(block, layout::onu_time_set::server, 0x01000000);
         block.put(layout::onu_time_set::interval, 60);
         block.put(layout::onu_time_set::mode, 1);
     }},
    {4, BSP_MSG_ONU_INFO, BSP_CMD_ONU_MULTI_LLID_SET, [](OnuBlock &) {}, 2},
    {5, BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_MONITOR_SET, [](OnuBlock &block) { block.put(layout::onu_switch::on, 1); }},
    {6, BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_SWITCH_SET,
     [](OnuBlock &block) { block.put(layout::onu_mc_switch_set::mode, 1); }},
    {7, BSP_MSG_ONU_CFG, BSP_CMD_ONU_FAST_LEAVE_SET,
     [](OnuBlock &block) { block.put(layout::onu_fast_leave_set::state, 1); }},
    {8, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ADMIN_STATE_SET, [](OnuBlock &) {}},
    {9, BSP_MSG_ONU_INFO, BSP_CMD_ONU_AUTONEG_SET, [](OnuBlock &) {}},
    {10, BSP_MSG_ONU_CFG, BSP_CMD_ONU_PAUSE_SET, [](OnuBlock &block) { block.put(layout::onu_pause::on, 1); }},
    {11, BSP_MSG_ONU_CFG, BSP_CMD_ONU_RATE_LIMIT_SET,
     [](OnuBlock &block) {
         block.put(layout::onu_rate_limit_set::down_pir, 1000);
         block.put(layout::onu_rate_limit_set::down_on, 1);
     }},
    {12, BSP_MSG_ONU_CFG, BSP_CMD_ONU_VLAN_SET,
     [](OnuBlock &block) {
         block.put(layout::onu_vlan_set::mode, 1);
         block.put(layout::onu_vlan_set::pvid, 100);
         block.put(layout::onu_vlan_set::tpid, 0x8100);
     }},
    {13, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CLASSIFICATION_SET,
     [](OnuBlock &block) {
         namespace at = layout::onu_classification_set;
         block.put(at::action, 1);
         block.put(at::count, 1);
         block.put(at::precedence[0], 1);
         block.put(at::mark[0], 255);
         block.put(at::entries[0], 1);
         block.put(at::operator_a[0], 7);
     }},
    {14, BSP_MSG_ONU_CFG, BSP_CMD_ONU_LOOP_DETECT_SET, [](OnuBlock &) {}},
};

uint32_t config_word(Full &fixture, uint32_t onu_id)
{
    const Reply reply =
        fixture.simulator.handle(message_of(BSP_MSG_ONU_CFG, onu_record_of(BSP_CMD_ONU_CONFIG_WORD, 1, onu_id)));
    return value_at(reply, layout::onu_config_word::word);
}

uint32_t set(Full &fixture, uint32_t onu_id, const Setting &setting)
{
    bsp_onu_msg record = onu_record_of(setting.command, 1, onu_id);
    record.onu_uni_port = 1;
    record.onu_arg24 = setting.llids;
    OnuBlock block(sizeof record.onu_data);
    setting.put(block);
    block.bytes().copy(reinterpret_cast<char *>(record.onu_data), block.bytes().size());
    Message message = message_of(setting.channel, record);
    message.call = catalogue::Call::set;
    return fixture.simulator.handle(message).status;
}

TEST(ConfigWord, EachSettingHasABit)
{
    Full fixture;
    for (const Setting &setting : settings) {
        bool tried = false;
        for (uint32_t onu_id = 1; onu_id < onus_per_port && !tried; ++onu_id) {
            const uint32_t before = config_word(fixture, onu_id);
            if (before >> setting.bit & 1 || set(fixture, onu_id, setting) != BSP_OK) continue;
            EXPECT_EQ(config_word(fixture, onu_id), before | 1u << setting.bit) << setting.bit;
            tried = true;
        }
        EXPECT_TRUE(tried) << setting.bit;
    }
}

TEST(ConfigWord, OfAnOnuThatWasToldNothingFollowsFromItsUniPorts)
{
    Full fixture;
    const Olt &olt = fixture.simulator.olt();
    for (const RemoteOnu &onu : onus_of(olt, *olt.port(1))) {
        uint32_t wanted = 0;
        for (const UniConfig &config : default_configs(olt.seed(), onu.binding->mac, onu.device))
            wanted |= (config.enabled ? 0u : 0x100u) | (config.autoneg ? 0u : 0x200u) | (config.pause ? 0x400u : 0u) |
                      (config.ingress || config.egress ? 0x800u : 0u) |
                      (config.vlan_mode == VlanMode::transparent ? 0u : 0x1000u);
        EXPECT_EQ(config_word(fixture, onu.onu_id), wanted) << onu.onu_id;
    }
}

TEST(ConfigWord, AnSlaOfEitherDirectionIsBit3)
{
    Binding upstream = binding_of(stranger(1)), downstream = binding_of(stranger(2));
    upstream.sla = Sla{.fixed = 0, .assured = 64, .maximum = 128, .priority = 0, .weight = 1};
    downstream.sla_down = 1000;
    Change kept;
    kept.put<Binding>({1, 1}, upstream);
    kept.put<Binding>({1, 2}, downstream);
    kept.put<Binding>({1, 3}, binding_of(stranger(3)));
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 0, .silent = 0}, kept);
    const auto bit = [&](uint32_t onu_id) {
        const bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_CONFIG_WORD, 1, onu_id);
        return value_at(fixture.simulator.handle(message_of(BSP_MSG_ONU_CFG, record)), layout::onu_config_word::word) >>
                   3 &
               1;
    };
    EXPECT_EQ(bit(1), 1u);
    EXPECT_EQ(bit(2), 1u);
    EXPECT_EQ(bit(3), 0u); // none of these ONUs is online
}

TEST(ConfigWord, AnOnuThatDoesNotExistIsSaid)
{
    Bulk fixture;
    EXPECT_EQ(fixture.ask_onu(BSP_MSG_ONU_CFG, BSP_CMD_ONU_CONFIG_WORD, 9, 1).status, PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.ask_onu(BSP_MSG_ONU_CFG, BSP_CMD_ONU_CONFIG_WORD, 1, 5).status, PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.ask_onu(BSP_MSG_ONU_CFG, BSP_CMD_ONU_CONFIG_WORD, 1, 128).status, PON_ERR_BAD_ONU_ID);
}

} // namespace
} // namespace ponsim
