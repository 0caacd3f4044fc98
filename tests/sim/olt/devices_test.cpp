// These tests check the views of devices and UNI ports.
#include "views/devices.h"

#include <cstring>

#include "rows.h"
#include "support.h"

namespace ponsim
{
namespace
{

constexpr size_t small_result = 10240; // the longest result on the channels of remote ONUs
constexpr size_t longest_answer_text = 1023;
constexpr uint32_t whole_port = 0, one_onu = 1;

Reply ask(ServiceFixture &fixture, uint32_t channel, uint32_t command, uint32_t pon_port, uint32_t onu_id,
          uint32_t scope = 0)
{
    bsp_onu_msg record = onu_record_of(command, pon_port, onu_id);
    put(record, layout::vlan_view::scope, scope);
    return fixture.simulator.handle(message_of(channel, record));
}

Reply onu_config(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id)
{
    return ask(fixture, BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_CONFIG, pon_port, onu_id);
}

Reply uni_config(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id)
{
    return ask(fixture, BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_PORT_CONFIG, pon_port, onu_id);
}

Reply vlan_modes(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id = 0, uint32_t scope = whole_port)
{
    return ask(fixture, BSP_MSG_ONU_SNMP, BSP_CMD_VIEW_VLAN_MODE_SNMP, pon_port, onu_id, scope);
}

Reply vlan_lists(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id = 0, uint32_t scope = whole_port)
{
    return ask(fixture, BSP_MSG_ONU_SNMP, BSP_CMD_VIEW_VLAN_LIST_SNMP, pon_port, onu_id, scope);
}

// Returns the text in the answer.
std::string answer_text(const Reply &reply)
{
    return reply.answer ? reply.answer->c_str() + offsetof(bsp_pon_msg_ext, ext_payload) : "no answer";
}

uint64_t sum(const rapidjson::Document &rows, const char *column)
{
    uint64_t total = 0;
    for (const auto &row : rows.GetArray())
        total += row[column].GetUint();
    return total;
}

// On this OLT, which usually has one port, ONUs that have not arrived there are bound to these ids.
struct Bound : ServiceFixture {
    explicit Bound(std::initializer_list<uint8_t> onu_ids, uint32_t ports = 1)
        : ServiceFixture({.seed = 1, .ports = ports, .arrivals = 1, .silent = 0})
    {
        for (uint8_t onu_id : onu_ids)
            send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, stranger(onu_id)));
    }
};

// These contents make rows longest. They go to the limits of what a device may be, and of how a port may be configured.

constexpr DeviceType longest_type{.vendor = "AAAA",
                                  .model = "BBBB",
                                  .chipset = "CCCCCCCC",
                                  .ge_ports = max_unis,
                                  .fe_ports = max_unis,
                                  .pots_ports = 99,
                                  .us_queues = 99,
                                  .fec = false,
                                  .battery = false,
                                  .igmp_snooping = false,
                                  .multicast_control = false,
                                  .fast_leave = false,
                                  .vlan_translation = false,
                                  .vlan_trunk = false};

const UniConfig longest_config{.enabled = true, // the text of a link that is up is longer than that of one that is down
                                                // or disabled
                               .autoneg = false,
                               .forced = {1000, true},
                               .pause = false,
                               .ingress = max_rate_limit,
                               .egress = max_rate_limit,
                               .vlan_mode = VlanMode::translation,
                               .pvid = 4094,
                               .vlans = std::vector<Vlan>(max_vlans, Vlan{4093, 4094})};

const Binding longest_binding{
    stranger(1),           0xffffffff, std::string(127, '"'), std::string(63, '\\'), std::string(63, '"'),
    std::string(127, '"'), false};

constexpr OnuState every_state[] = {OnuState::offline, OnuState::online, OnuState::unauthenticated};

BoundOnu longest_onu(uint32_t pon_port, uint32_t onu_id, OnuState state)
{
    const Device device{&longest_type, "HHHHHHHH", "SSSSSSSSSSSSSSSS",
                        std::vector<Uni>(max_unis, Uni{1000, LinkMode{1000, true}})};
    const UpgradeProgress upgrade{std::string(31, 't'), "downloading", 100, "verification"};
    return {pon_port,
            onu_id,
            &longest_binding,
            state,
            device,
            std::vector<UniConfig>(max_unis, longest_config),
            std::vector<std::optional<LinkMode>>(max_unis, LinkMode{1000, true}),
            upgrade};
}

std::vector<BoundOnu> longest_olt(OnuState state)
{
    std::vector<BoundOnu> onus;
    for (uint32_t pon_port = 1; pon_port <= max_ports; ++pon_port)
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
            onus.push_back(longest_onu(pon_port, onu_id, state));
    return onus;
}

std::vector<UniGroup> longest_port()
{
    std::vector<UniGroup> groups;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        groups.push_back({max_ports, onu_id, {}, std::vector<UniConfig>(max_unis, longest_config)});
    return groups;
}

std::vector<UniGroup> longest_ports()
{
    std::vector<UniGroup> groups;
    for (uint32_t pon_port = 1; pon_port <= max_ports; ++pon_port)
        groups.push_back({pon_port, {}, {}, std::vector<UniConfig>(onus_per_port * max_unis, longest_config)});
    return groups;
}

TEST(Longest, ViewsOfTheWholeOltStayWithin1MiB)
{
    for (OnuState state : every_state) {
        const std::vector<BoundOnu> onus = longest_olt(state);
        EXPECT_LE(capabilities_table(onus).size(), max_result);
        EXPECT_LE(upgrade_table(onus).size(), max_result);
        EXPECT_LE(uni_attributes_table(onus).size(), max_result);
    }
}

TEST(Longest, TheUniAttributesOfTheWholeOltAreAllThere)
{
    EXPECT_EQ(parse(uni_attributes_table(longest_olt(OnuState::online))).Size(), max_ports * onus_per_port * max_unis);
}

TEST(Longest, ADisabledPortIsNoLongerThanOneThatIsUp)
{
    std::vector<BoundOnu> onu{longest_onu(1, 1, OnuState::online)};
    const size_t up = uni_attributes_table(onu).size();
    for (UniConfig &config : onu[0].configs)
        config.enabled = false;
    std::ranges::fill(onu[0].links, std::nullopt);
    EXPECT_LE(uni_attributes_table(onu).size(), up);
}

TEST(Longest, AnOnusConfigurationFitsTheAnswer)
{
    for (OnuState state : every_state) {
        const std::vector<BoundOnu> onu{longest_onu(16, 127, state)};
        EXPECT_LE(onu_config_table(onu).size(), longest_answer_text);
    }
}

TEST(Longest, TheUniPortsOfAnOnuStayWithin10240)
{
    const std::vector<BoundOnu> onu{longest_onu(16, 127, OnuState::online)};
    EXPECT_LE(uni_config_table(onu).size(), small_result);
}

TEST(Longest, TheVlansOfTheOltOfAPortAndOfAnOnuStayWithin10240)
{
    const std::vector<UniGroup> unis(max_unis, UniGroup{16, 127, max_unis, {longest_config}});
    for (const std::vector<UniGroup> &groups : {longest_ports(), longest_port(), unis}) {
        EXPECT_LE(vlan_modes_table(groups).size(), small_result);
        EXPECT_LE(vlan_lists_table(groups).size(), small_result);
    }
}

TEST(Devices, AnOltWithEveryIdBoundIsShownWhole)
{
    ServiceFixture fixture({.seed = 1, .ports = 16, .arrivals = 0, .silent = 0});
    for (uint32_t pon_port = 1; pon_port <= max_ports; ++pon_port)
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
            fixture.send(record_of(BSP_CMD_ONU_BIND, pon_port, onu_id,
                                   stranger(static_cast<uint8_t>(onu_id), static_cast<uint8_t>(pon_port))));
    const rapidjson::Document onus = parse(fixture.view(BSP_CMD_VIEW_ONU_CAP_SNMP));
    const uint64_t unis = sum(onus, "ge_ports") + sum(onus, "fe_ports");
    EXPECT_EQ(onus.Size(), 2048u);
    EXPECT_EQ(parse(fixture.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB)).Size(), 2048u);
    EXPECT_EQ(parse(fixture.view(BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP)).Size(), unis);

    const rapidjson::Document ports = parse(vlan_modes(fixture, 0).result.value());
    EXPECT_EQ(sum(ports, "transp") + sum(ports, "tag") + sum(ports, "transl") + sum(ports, "trunk"), unis);
    EXPECT_EQ(parse(vlan_modes(fixture, 16).result.value()).Size(), 128u);
    EXPECT_EQ(parse(vlan_lists(fixture, 16).result.value()).Size(), 128u);
}

TEST(Capabilities, AreThoseOfTheDevice)
{
    Bound fixture{0, 9};
    const rapidjson::Document rows = parse(fixture.view(BSP_CMD_VIEW_ONU_CAP_SNMP));
    ASSERT_EQ(rows.Size(), 2u);
    const Device device = device_of(1, stranger(9));
    EXPECT_EQ(rows[1]["onu_id"].GetUint(), 9u);
    EXPECT_EQ(rows[1]["mac"].GetString(), text::mac_text(stranger(9)));
    EXPECT_EQ(rows[1]["model"].GetString(), device.type->model);
    EXPECT_EQ(rows[1]["ge_ports"].GetUint(), device.type->ge_ports);
    EXPECT_EQ(rows[1]["fec"].GetBool(), device.type->fec);
}

TEST(UpgradeBaseInfo, SaysWhoIsOnlineAndWithWhatSoftware)
{
    Bound fixture{9};
    const Mac mac = fixture.simulator.olt().port(1)->arrivals[0].mac;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 3, mac));
    const rapidjson::Document rows = parse(fixture.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 1));
    ASSERT_EQ(rows.Size(), 2u);
    EXPECT_STREQ(rows[0]["state"].GetString(), "online");
    EXPECT_EQ(rows[0]["software"].GetString(), device_of(1, mac).software);
    EXPECT_STREQ(rows[1]["state"].GetString(), "offline");
}

TEST(UpgradeBaseInfo, IsOfOnePortOrForPort0OfAll)
{
    Bound fixture({9}, 2);
    fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 1, stranger(100)));
    EXPECT_EQ(parse(fixture.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 0)).Size(), 2u);
    const rapidjson::Document rows = parse(fixture.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 2));
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_EQ(rows[0]["mac"].GetString(), text::mac_text(stranger(100)));
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 3)), PON_ERR_NO_PORT);
}

TEST(UniAttributes, LinksOfAnOfflineOnuAreUnknown)
{
    Bound fixture{9};
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 3, fixture.simulator.olt().port(1)->arrivals[0].mac));
    const rapidjson::Document rows = parse(fixture.view(BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP));
    ASSERT_GT(rows.Size(), 1u);
    for (const auto &row : rows.GetArray())
        EXPECT_EQ(row["link"].IsNull(), row["onu_id"].GetUint() == 9);
}

TEST(UniAttributes, ARowLooksLikeThis)
{
    BoundOnu onu = longest_onu(3, 7, OnuState::online);
    onu.configs.resize(2);
    onu.configs[0].egress.reset();
    onu.configs[1].enabled = false;
    onu.links[1].reset();
    EXPECT_EQ(uni_attributes_table({&onu, 1}),
              R"([{"pon_port":3,"onu_id":7,"uni":1,"admin":true,"link":"1000FD","autoneg":false,"pause":false,)"
              R"("ingress":999999,"egress":null},)"
              R"({"pon_port":3,"onu_id":7,"uni":2,"admin":false,"link":"down","autoneg":false,"pause":false,)"
              R"("ingress":999999,"egress":999999}])");
}

TEST(OnuConfig, ComesAsATextAndAsAResult)
{
    Bound fixture{9};
    const Reply reply = onu_config(fixture, 1, 9);
    EXPECT_EQ(reply.status, BSP_OK);
    EXPECT_EQ(reply.answer.value().size(), sizeof(bsp_pon_msg_ext));
    EXPECT_EQ(answer_text(reply), reply.result);
    EXPECT_EQ(parse(answer_text(reply))[0]["mac"].GetString(), text::mac_text(stranger(9)));
}

TEST(OnuConfig, HasTheLongestBindTextsToo)
{
    ServiceFixture fixture;
    bsp_pon_msg record = record_of(BSP_CMD_ONU_BIND, 16, 127, stranger(1));
    record.arg_value = 0xffffffff;
    memset(record.text237, '"', sizeof record.text237 - 1);
    memset(record.text173, '\\', sizeof record.text173 - 1);
    memset(record.text365, '"', sizeof record.text365 - 1);
    ASSERT_EQ(fixture.send(record), BSP_OK);
    const rapidjson::Document rows = parse(answer_text(onu_config(fixture, 16, 127)));
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_EQ(rows[0]["text_a"].GetString(), std::string(127, '"'));
    EXPECT_EQ(rows[0]["text_b"].GetString(), std::string(63, '\\'));
    EXPECT_EQ(rows[0]["text_c"].GetString(), std::string(63, '"'));
}

TEST(OnuConfig, OfNoOnuIsAStatusAndATextOfNoRows)
{
    Bound fixture{9};
    for (const auto &[pon_port, onu_id, status] :
         {std::tuple{2u, 9u, PON_ERR_NO_PORT}, {1u, 128u, PON_ERR_BAD_ONU_ID}, {1u, 8u, PON_ERR_NOT_BOUND}}) {
        const Reply reply = onu_config(fixture, pon_port, onu_id);
        EXPECT_EQ(reply.status, status);
        EXPECT_EQ(answer_text(reply), "[]");
        EXPECT_EQ(reply.result, std::nullopt);
    }
}

TEST(UniConfigView, HasARowAUniPort)
{
    Bound fixture{9};
    const Device device = device_of(1, stranger(9));
    const std::vector<UniConfig> configs = default_configs(1, stranger(9), device);
    const rapidjson::Document rows = parse(uni_config(fixture, 1, 9).result.value());
    ASSERT_EQ(rows.Size(), device.unis.size());
    for (uint32_t index = 0; index < rows.Size(); ++index) {
        EXPECT_EQ(rows[index]["uni"].GetUint(), index + 1);
        EXPECT_EQ(rows[index]["line_rate"].GetUint(), device.unis[index].line_rate);
        EXPECT_EQ(rows[index]["vlan_mode"].GetString(), to_text(configs[index].vlan_mode));
        EXPECT_EQ(rows[index]["pvid"].GetUint(), configs[index].pvid);
    }
}

TEST(UniConfigView, SpeedAndDuplexAreConfiguredWithoutNegotiationOnly)
{
    BoundOnu onu = longest_onu(1, 1, OnuState::online);
    onu.configs.resize(2);
    onu.configs[1].autoneg = true;
    const rapidjson::Document rows = parse(uni_config_table({&onu, 1}));
    EXPECT_EQ(rows[0]["speed"].GetUint(), 1000u);
    EXPECT_STREQ(rows[0]["duplex"].GetString(), "full");
    EXPECT_TRUE(rows[1]["speed"].IsNull() && rows[1]["duplex"].IsNull());
}

TEST(UniConfigView, OfNoOnuIsAStatus)
{
    Bound fixture{9};
    EXPECT_EQ(uni_config(fixture, 2, 9).status, PON_ERR_NO_PORT);
    EXPECT_EQ(uni_config(fixture, 1, 128).status, PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(uni_config(fixture, 1, 8).status, PON_ERR_NOT_BOUND);
}

TEST(VlanViews, Port0HasARowAPortAlsoOneWithoutOnus)
{
    Bound fixture({9}, 3);
    const rapidjson::Document rows = parse(vlan_modes(fixture, 0).result.value());
    ASSERT_EQ(rows.Size(), 3u);
    const rapidjson::Value &first = rows[0];
    EXPECT_EQ(first["transp"].GetUint() + first["tag"].GetUint() + first["transl"].GetUint() + first["trunk"].GetUint(),
              device_of(1, stranger(9)).unis.size());
    EXPECT_TRUE(first["onu_id"].IsNull() && first["uni"].IsNull());
    EXPECT_EQ(parse(vlan_lists(fixture, 0).result.value()).Size(), 3u);
}

TEST(VlanViews, APortHasARowAnOnuAlsoForId0)
{
    Bound fixture{0, 9};
    for (const Reply &reply : {vlan_modes(fixture, 1), vlan_lists(fixture, 1)}) {
        const rapidjson::Document rows = parse(reply.result.value());
        ASSERT_EQ(rows.Size(), 2u);
        EXPECT_EQ(rows[0]["onu_id"].GetUint(), 0u);
        EXPECT_TRUE(rows[0]["uni"].IsNull());
        EXPECT_EQ(rows[1]["onu_id"].GetUint(), 9u);
    }
}

TEST(VlanViews, AnOnuHasARowAUniPortAlsoOnId0)
{
    Bound fixture{0};
    for (const Reply &reply : {vlan_modes(fixture, 1, 0, one_onu), vlan_lists(fixture, 1, 0, one_onu)}) {
        const rapidjson::Document rows = parse(reply.result.value());
        ASSERT_EQ(rows.Size(), device_of(1, stranger(0)).unis.size());
        EXPECT_EQ(rows[0]["uni"].GetUint(), 1u);
    }
}

TEST(VlanViews, ModesAreCounted)
{
    UniGroup group{1, 5, {}, std::vector<UniConfig>(4, longest_config)};
    group.configs[1].vlan_mode = VlanMode::tag;
    EXPECT_EQ(vlan_modes_table({&group, 1}),
              R"([{"pon_port":1,"onu_id":5,"uni":null,"transp":0,"tag":1,"transl":3,"trunk":0}])");
}

TEST(VlanViews, ListsAreCountedAndShownForAUniPort)
{
    UniGroup group{1, 5, {}, std::vector<UniConfig>(2, longest_config)};
    group.configs[0].vlans = {{10, 110}, {20, 120}};
    EXPECT_EQ(vlan_lists_table({&group, 1}),
              R"([{"pon_port":1,"onu_id":5,"uni":null,"pvid":null,"vlans":10,"list":null}])");
    group.uni = 1;
    group.configs.resize(1);
    EXPECT_EQ(vlan_lists_table({&group, 1}),
              R"([{"pon_port":1,"onu_id":5,"uni":1,"pvid":4094,"vlans":2,"list":"10:110,20:120"}])");
}

TEST(VlanViews, WhatDoesNotExistIsAStatus)
{
    Bound fixture{9};
    EXPECT_EQ(vlan_modes(fixture, 2).status, PON_ERR_NO_PORT);
    EXPECT_EQ(vlan_modes(fixture, 0, 9, one_onu).status, PON_ERR_NO_PORT);
    EXPECT_EQ(vlan_modes(fixture, 1, 128, one_onu).status, PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(vlan_modes(fixture, 1, 8, one_onu).status, PON_ERR_NOT_BOUND);
    EXPECT_EQ(vlan_modes(fixture, 1, 9, 2).status, PON_ERR_BAD_RECORD);
}

} // namespace
} // namespace ponsim
