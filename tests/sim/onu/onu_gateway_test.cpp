// These tests check WAN connections, WLANs, CATV, voice, access control and DHCP of ONUs.
#include "model/onu/gateway.h"

#include "model/onu/ipv4.h"
#include "rows.h"
#include "support.h"
#include "views/gateway.h"

namespace ponsim
{
namespace
{

using catalogue::Call;

constexpr size_t small_result = 10240;
constexpr uint32_t gateway = 1, bridge = 2, absent = 3; // ids of ONUs

// Port 1 of this OLT has an ONU that is a gateway, one that is not, and one that has not arrived.
struct Home : ServiceFixture {
    explicit Home(const std::string &file = {})
        : ServiceFixture({.seed = 1, .ports = 1, .arrivals = 64, .silent = 0}, file)
    {
        for (const Arrival &arrival : port(1).arrivals)
            bind(device_of(1, arrival.mac).type->pots_ports > 0 ? gateway : bridge, arrival.mac);
        for (uint8_t last = 0; !port(1).bindings[absent]; ++last)
            if (device_of(1, stranger(last)).type->pots_ports > 0) bind(absent, stranger(last));
    }
    void bind(uint32_t onu_id, const Mac &mac)
    {
        if (!port(1).bindings[onu_id]) send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, mac));
    }

    RemoteOnu onu(uint32_t onu_id) const { return find_onu(simulator.olt(), 1, onu_id).onu; }
    Reply call(Call call, bsp_onu_msg record)
    {
        Message message = message_of(BSP_MSG_ONU_CFG, record);
        message.call = call;
        return simulator.handle(message);
    }
    uint32_t set(uint32_t command, uint32_t onu_id, uint32_t number, const OnuBlock &block)
    {
        bsp_onu_msg record = onu_record_of(command, 1, onu_id);
        record.onu_arg24 = number;
        std::ranges::copy(block.bytes(), record.onu_data);
        return call(Call::set, record).status;
    }
    Reply ask(uint32_t command, uint32_t onu_id, uint32_t number = 0)
    {
        bsp_onu_msg record = onu_record_of(command, 1, onu_id);
        record.onu_arg24 = number;
        return call(Call::get, record);
    }
    rapidjson::Document rows(uint32_t command, uint32_t onu_id = gateway, uint32_t number = 0)
    {
        return parse(ask(command, onu_id, number).result.value_or("no result"));
    }
    // Returns the rows of a table of port 1.
    rapidjson::Document port_rows(uint32_t command) { return parse(view(command, 1)); }
    void wait() { simulator.advance(simulator.olt().now() + oam_delay); }
};

OnuBlock a_bridge(const char *name = "tv")
{
    namespace at = layout::onu_wan;
    OnuBlock block(wan_size);
    block.put(at::mode, wan_bridge);
    block.put(at::service, wan_other);
    block.put(at::priority, 4);
    block.put(at::vlan, 30);
    block.put(at::name, name);
    return block;
}

OnuBlock a_static_route()
{
    namespace at = layout::onu_wan;
    OnuBlock block = a_bridge("office");
    block.put(at::mode, wan_route);
    block.put(at::ip_mode, ip_static);
    put_ipv4(block, at::address, 0x0a000005);
    put_ipv4(block, at::mask, 0xffffff00);
    put_ipv4(block, at::gateway, 0x0a000001);
    return block;
}

template <class Field, class Value>
OnuBlock with(OnuBlock block, layout::At<Field> at, const Value &value)
{
    block.put(at, value);
    return block;
}

TEST(OnuWan, ABridgeHasOneConnectionWithoutAddress)
{
    Home home;
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_WAN, bridge);
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_STREQ(rows[0]["mode"].GetString(), "bridge");
    EXPECT_TRUE(rows[0]["ip_mode"].IsNull() && rows[0]["address"].IsNull() && rows[0]["gateway"].IsNull());
    EXPECT_STREQ(rows[0]["state"].GetString(), "up");
}

TEST(OnuWan, AGatewayHasAConnectionForTheInternetAndOneForVoice)
{
    Home home;
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_WAN);
    ASSERT_EQ(rows.Size(), 2u);
    EXPECT_STREQ(rows[0]["service"].GetString(), "internet");
    EXPECT_STREQ(rows[1]["service"].GetString(), "voice");
    EXPECT_STREQ(rows[1]["gateway"].GetString(), "100.64.0.1");
    EXPECT_EQ(std::string(rows[1]["address"].GetString()).substr(0, 4), "100.");
}

TEST(OnuWan, AConnectionThatIsAddedConnectsUntilTheOnuHasIt)
{
    Home home;
    ASSERT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 8, a_static_route()), BSP_OK);
    EXPECT_STREQ(home.rows(BSP_CMD_VIEW_ONU_WAN)[2]["state"].GetString(), "connecting");
    home.wait();
    EXPECT_EQ(home.ask(BSP_CMD_VIEW_ONU_WAN, gateway, 8).result,
              R"([{"index":8,"name":"office","mode":"route","service":"other","vlan":30,"priority":4,)"
              R"("ip_mode":"static","address":"10.0.0.5/24","gateway":"10.0.0.1","state":"up"}])");
}

TEST(OnuWan, AConnectionIsRemovedByMode0)
{
    Home home;
    EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 1, with(a_bridge(), layout::onu_wan::mode, 0)),
              PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 1, OnuBlock(wan_size)), BSP_OK);
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_WAN);
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_EQ(rows[0]["index"].GetUint(), 2u);
}

TEST(OnuWan, ConnectionsAreNumbered1To8AndShownByNumber)
{
    Home home;
    EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 0, a_bridge()), PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 9, a_bridge()), PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.ask(BSP_CMD_VIEW_ONU_WAN, gateway, 9).status, PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.rows(BSP_CMD_VIEW_ONU_WAN, gateway, 2).Size(), 1u);
    EXPECT_EQ(home.rows(BSP_CMD_VIEW_ONU_WAN, gateway, 3).Size(), 0u);
}

TEST(OnuWan, OnlyAGatewayRoutes)
{
    Home home;
    EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, bridge, 2, a_static_route()), PON_ERR_NOT_ABLE);
    EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, bridge, 2, a_bridge()), BSP_OK);
}

TEST(OnuWan, WrongValuesAreRefused)
{
    namespace at = layout::onu_wan;
    Home home;
    const OnuBlock good = a_static_route();
    for (const OnuBlock &block :
         {with(good, at::mode, 3), with(good, at::service, 0), with(good, at::service, 5), with(good, at::ip_mode, 0),
          with(good, at::ip_mode, 2), with(good, at::ip_mode, 4), with(good, at::priority, 8),
          with(good, at::vlan, 4095), with(good, byte_of(at::mask, 1), 0), with(good, byte_of(at::address, 3), 255),
          with(good, byte_of(at::gateway, 2), 1), with(a_bridge(), at::ip_mode, 1), a_bridge(""), a_bridge("\xff"),
          a_bridge("123456789012345678901234")})
        EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 3, block), PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 3, good), BSP_OK);
}

TEST(OnuWan, SurvivesReopening)
{
    const Folder folder;
    {
        Home home(folder.file("state"));
        ASSERT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 5, a_bridge("Büro")), BSP_OK);
    }
    Home home(folder.file("state"));
    EXPECT_STREQ(home.rows(BSP_CMD_VIEW_ONU_WAN, gateway, 5)[0]["name"].GetString(), "Büro");
}

OnuBlock a_wlan(const char *name = "garden")
{
    namespace at = layout::onu_wlan;
    OnuBlock block(wlan_size);
    block.put(at::enabled, 1);
    block.put(at::channel, 11);
    block.put(at::security, wlan_wpa3);
    block.put(at::hidden, 1);
    block.put(at::name, name);
    return block;
}

TEST(OnuWlan, AGatewayHasFourOfWhichTheFirstIsEnabled)
{
    Home home;
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_WLAN);
    ASSERT_EQ(rows.Size(), 4u);
    for (const auto &row : rows.GetArray())
        EXPECT_EQ(row["enabled"].GetBool(), row["index"].GetUint() == 1);
    EXPECT_EQ(rows[1]["clients"].GetUint(), 0u);
    EXPECT_EQ(home.rows(BSP_CMD_VIEW_ONU_WLAN, bridge).Size(), 0u);
}

TEST(OnuWlan, IsAsItWasSet)
{
    Home home;
    ASSERT_EQ(home.set(BSP_CMD_ONU_WLAN_SET, gateway, 2, a_wlan()), BSP_OK);
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_WLAN);
    EXPECT_TRUE(rows[1]["enabled"].GetBool() && rows[1]["hidden"].GetBool());
    EXPECT_STREQ(rows[1]["name"].GetString(), "garden");
    EXPECT_STREQ(rows[1]["security"].GetString(), "WPA3");
    EXPECT_EQ(rows[1]["channel"].GetUint(), 11u);
}

TEST(OnuWlan, HasClientsWhileTheOnuHasItEnabled)
{
    Home home;
    for (uint32_t number = 2; number <= max_wlans; ++number)
        ASSERT_EQ(home.set(BSP_CMD_ONU_WLAN_SET, gateway, number, a_wlan()), BSP_OK);
    const auto clients = [&home] {
        uint32_t sum = 0;
        const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_WLAN);
        for (const auto &row : rows.GetArray())
            if (row["index"].GetUint() > 1) sum += row["clients"].GetUint();
        return sum;
    };
    EXPECT_EQ(clients(), 0u);
    home.wait();
    EXPECT_GT(clients(), 0u);
}

TEST(OnuWlan, WrongValuesAreRefused)
{
    namespace at = layout::onu_wlan;
    Home home;
    for (const OnuBlock &block :
         {with(a_wlan(), at::enabled, 2), with(a_wlan(), at::channel, 14), with(a_wlan(), at::security, 4),
          with(a_wlan(), at::hidden, 2), a_wlan(""), a_wlan("\n")})
        EXPECT_EQ(home.set(BSP_CMD_ONU_WLAN_SET, gateway, 1, block), PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.set(BSP_CMD_ONU_WLAN_SET, gateway, 5, a_wlan()), PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.set(BSP_CMD_ONU_WLAN_SET, bridge, 1, a_wlan()), PON_ERR_NOT_ABLE);
}

// Returns the id of an ONU that is online. It has a CATV port if `catv` is true, and otherwise none.
uint32_t bind_with_catv(Home &home, bool catv)
{
    for (uint32_t index = 0; index < 20; ++index)
        home.bind(10 + index, home.port(1).arrivals[index + 20].mac);
    for (uint32_t onu_id = 10; onu_id < 30; ++onu_id)
        if (home.port(1).bindings[onu_id] &&
            user_services(home.simulator.olt(), home.onu(onu_id)).catv.has_value() == catv)
            return onu_id;
    return absent;
}

TEST(OnuCatv, IsOnOnceItIsSwitchedOn)
{
    Home home;
    const uint32_t onu_id = bind_with_catv(home, true);
    EXPECT_FALSE(home.rows(BSP_CMD_VIEW_ONU_CATV, onu_id)[0]["on"].GetBool());
    home.simulator.change(switch_on(home.simulator.olt(), home.onu(onu_id), true).change);
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_CATV, onu_id);
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_TRUE(rows[0]["on"].GetBool());
    EXPECT_GT(rows[0]["input"].GetDouble(), -8.0);
}

TEST(OnuCatv, AnOnuWithoutSuchAPortHasNoRow)
{
    Home home;
    const uint32_t onu_id = bind_with_catv(home, false);
    EXPECT_EQ(home.ask(BSP_CMD_VIEW_ONU_CATV, onu_id).result, "[]");
}

TEST(OnuVoip, HasARowAPotsPortThatIsRegistered)
{
    Home home;
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_VOIP);
    ASSERT_EQ(rows.Size(), 2u);
    EXPECT_EQ(rows[1]["pots"].GetUint(), 2u);
    EXPECT_STRNE(rows[0]["user"].GetString(), rows[1]["user"].GetString());
    EXPECT_STREQ(rows[0]["state"].GetString(), "registered");
    EXPECT_EQ(home.rows(BSP_CMD_VIEW_ONU_VOIP, bridge).Size(), 0u);
}

TEST(OnuVoip, IsUnregisteredWithoutAConnectionForVoice)
{
    Home home;
    ASSERT_EQ(home.set(BSP_CMD_ONU_WAN_SET, gateway, 2, OnuBlock(wan_size)), BSP_OK);
    EXPECT_STREQ(home.rows(BSP_CMD_VIEW_ONU_VOIP)[0]["state"].GetString(), "unregistered");
}

OnuBlock a_rule()
{
    namespace at = layout::onu_acl;
    OnuBlock block(acl_size);
    block.put(at::action, acl_deny);
    block.put(at::direction, acl_downstream);
    block.put(at::protocol, ip_udp);
    put_ipv4(block, at::source, 0x0a000000);
    put_ipv4(block, at::source_mask, 0xff000000);
    block.put(at::first_port, 80);
    block.put(at::last_port, 90);
    return block;
}

TEST(OnuAcl, ARuleIsAddedAndRemoved)
{
    Home home;
    const rapidjson::SizeType before = home.rows(BSP_CMD_VIEW_ONU_ACL).Size();
    ASSERT_EQ(home.set(BSP_CMD_ONU_ACL_SET, gateway, 8, a_rule()), BSP_OK);
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_ACL);
    ASSERT_EQ(rows.Size(), before + 1);
    const rapidjson::Value &row = rows[before];
    EXPECT_EQ(row["index"].GetUint(), 8u);
    EXPECT_STREQ(row["action"].GetString(), "deny");
    EXPECT_STREQ(row["direction"].GetString(), "downstream");
    EXPECT_STREQ(row["source"].GetString(), "10.0.0.0/8");
    EXPECT_TRUE(row["dest"].IsNull());
    EXPECT_EQ(row["last_port"].GetUint(), 90u);
    ASSERT_EQ(home.set(BSP_CMD_ONU_ACL_SET, gateway, 8, OnuBlock(acl_size)), BSP_OK);
    EXPECT_EQ(home.rows(BSP_CMD_VIEW_ONU_ACL).Size(), before);
}

TEST(OnuAcl, WrongValuesAreRefused)
{
    namespace at = layout::onu_acl;
    Home home;
    const OnuBlock good = a_rule();
    for (const OnuBlock &block :
         {with(good, at::action, 0), with(good, at::action, 3), with(good, at::direction, 0),
          with(good, at::direction, 3), with(good, byte_of(at::source, 3), 1),
          with(good, byte_of(at::source_mask, 3), 1), with(good, byte_of(at::dest, 0), 10),
          with(good, at::last_port, 79), with(good, at::first_port, 0), with(good, at::protocol, 1)})
        EXPECT_EQ(home.set(BSP_CMD_ONU_ACL_SET, gateway, 1, block), PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.set(BSP_CMD_ONU_ACL_SET, gateway, 9, good), PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.set(BSP_CMD_ONU_ACL_SET, bridge, 1, good), PON_ERR_NOT_ABLE);
}

OnuBlock dhcp_of_one_address()
{
    namespace at = layout::onu_dhcp;
    OnuBlock block(dhcp_size);
    block.put(at::enabled, 1);
    block.put(at::lease_time, 60);
    put_ipv4(block, at::address, 0x0a000001);
    put_ipv4(block, at::mask, 0xffffff00);
    put_ipv4(block, at::first, 0x0a000002);
    put_ipv4(block, at::last, 0x0a000002);
    return block;
}

TEST(OnuDhcp, IsAsItWasSet)
{
    Home home;
    EXPECT_STREQ(home.rows(BSP_CMD_VIEW_ONU_DHCP)[0]["first"].GetString(), "192.168.1.100");
    ASSERT_EQ(home.set(BSP_CMD_ONU_DHCP_SET, gateway, 0, dhcp_of_one_address()), BSP_OK);
    const rapidjson::Document rows = home.rows(BSP_CMD_VIEW_ONU_DHCP);
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_STREQ(rows[0]["address"].GetString(), "10.0.0.1/24");
    EXPECT_STREQ(rows[0]["last"].GetString(), "10.0.0.2");
    EXPECT_EQ(rows[0]["lease_time"].GetUint(), 60u);
    EXPECT_EQ(home.rows(BSP_CMD_VIEW_ONU_DHCP, bridge).Size(), 0u);
}

TEST(OnuDhcp, LeasesNoMoreAddressesThanThereAre)
{
    Home home;
    for (uint32_t number = 1; number <= max_wlans; ++number)
        home.set(BSP_CMD_ONU_WLAN_SET, gateway, number, a_wlan());
    home.wait();
    EXPECT_GT(home.rows(BSP_CMD_VIEW_ONU_DHCP)[0]["leases"].GetUint(), 1u);
    ASSERT_EQ(home.set(BSP_CMD_ONU_DHCP_SET, gateway, 0, dhcp_of_one_address()), BSP_OK);
    home.wait();
    EXPECT_EQ(home.rows(BSP_CMD_VIEW_ONU_DHCP)[0]["leases"].GetUint(), 1u);
    home.set(BSP_CMD_ONU_DHCP_SET, gateway, 0, with(dhcp_of_one_address(), layout::onu_dhcp::enabled, 0));
    home.wait();
    EXPECT_EQ(home.rows(BSP_CMD_VIEW_ONU_DHCP)[0]["leases"].GetUint(), 0u);
}

TEST(OnuDhcp, WrongValuesAreRefused)
{
    namespace at = layout::onu_dhcp;
    Home home;
    const OnuBlock good = dhcp_of_one_address();
    for (const OnuBlock &block : {with(good, at::enabled, 2), with(good, at::lease_time, 59),
                                  with(good, at::lease_time, 864001), with(good, byte_of(at::address, 3), 2),
                                  with(good, byte_of(at::mask, 3), 1), with(good, byte_of(at::first, 3), 3),
                                  with(good, byte_of(at::last, 3), 255), with(good, byte_of(at::last, 2), 1)})
        EXPECT_EQ(home.set(BSP_CMD_ONU_DHCP_SET, gateway, 0, block), PON_ERR_BAD_RECORD);
    EXPECT_EQ(home.set(BSP_CMD_ONU_DHCP_SET, bridge, 0, good), PON_ERR_NOT_ABLE);
}

TEST(OnuGateway, AnOnuThatIsOfflineOrNotBoundIsAStatus)
{
    Home home;
    for (const auto &[onu_id, status] : {std::pair{absent, PON_ERR_OFFLINE}, {9u, PON_ERR_NOT_BOUND}}) {
        for (uint32_t command : {BSP_CMD_VIEW_ONU_WAN, BSP_CMD_VIEW_ONU_WLAN, BSP_CMD_VIEW_ONU_CATV,
                                 BSP_CMD_VIEW_ONU_VOIP, BSP_CMD_VIEW_ONU_ACL, BSP_CMD_VIEW_ONU_DHCP}) {
            EXPECT_EQ(home.ask(command, onu_id).status, status) << command;
            EXPECT_EQ(home.ask(command, onu_id).result, std::nullopt) << command;
        }
        EXPECT_EQ(home.set(BSP_CMD_ONU_WAN_SET, onu_id, 1, a_bridge()), status);
        EXPECT_EQ(home.set(BSP_CMD_ONU_DHCP_SET, onu_id, 0, dhcp_of_one_address()), status);
    }
}

TEST(OnuGatewayTables, ShowTheConfigurationOfOnusThatAreOffline)
{
    Home home;
    const rapidjson::Document wlans = home.port_rows(BSP_CMD_VIEW_ONU_WLAN_TABLE);
    ASSERT_EQ(wlans.Size(), 2u); // the bridge has none
    EXPECT_EQ(wlans[1]["onu_id"].GetUint(), absent);
    EXPECT_EQ(wlans[1]["enabled"].GetUint(), 1u);
    EXPECT_TRUE(wlans[0]["clients"].IsUint() && wlans[1]["clients"].IsNull());

    const rapidjson::Document wans = home.port_rows(BSP_CMD_VIEW_ONU_WAN_TABLE);
    ASSERT_EQ(wans.Size(), 3u);
    EXPECT_EQ(wans[0]["up"].GetUint(), 2u);
    EXPECT_TRUE(wans[0]["address"].IsString() && wans[1]["address"].IsNull() && wans[2]["address"].IsNull());
    EXPECT_EQ(wans[2]["wans"].GetUint(), 2u);
    EXPECT_TRUE(wans[2]["up"].IsNull());

    const rapidjson::Document sip = home.port_rows(BSP_CMD_VIEW_ONU_SIP_TABLE);
    ASSERT_EQ(sip.Size(), 4u);
    EXPECT_STREQ(sip[0]["state"].GetString(), "registered");
    EXPECT_TRUE(sip[2]["state"].IsNull());
}

TEST(OnuGatewayTables, CatvHasARowAnOnuWithACatvPort)
{
    Home home;
    const uint32_t with_port = bind_with_catv(home, true);
    const uint32_t without = bind_with_catv(home, false);
    std::vector<uint32_t> shown;
    const rapidjson::Document rows = home.port_rows(BSP_CMD_VIEW_ONU_CATV_TABLE);
    for (const auto &row : rows.GetArray())
        shown.push_back(row["onu_id"].GetUint());
    EXPECT_EQ(std::ranges::count(shown, with_port), 1);
    EXPECT_EQ(std::ranges::count(shown, without), 0);
}

TEST(OnuGatewayTables, AreOfOnePort)
{
    Home home;
    for (uint32_t command : {BSP_CMD_VIEW_ONU_WLAN_TABLE, BSP_CMD_VIEW_ONU_WAN_TABLE, BSP_CMD_VIEW_ONU_CATV_TABLE,
                             BSP_CMD_VIEW_ONU_SIP_TABLE})
        for (uint32_t pon_port : {0u, 2u})
            EXPECT_EQ(home.ServiceFixture::ask(record_of(command, pon_port)).status, PON_ERR_NO_PORT);
}

// Returns the contents that make rows longest.
UserServices longest_onu(uint32_t onu_id)
{
    OnuBlock wan = a_static_route();
    wan.put(layout::onu_wan::service, wan_management);
    wan.put(layout::onu_wan::vlan, 4094);
    put_ipv4(wan, layout::onu_wan::address, 0xdfdfdfdf); // 223.223.223.223
    put_ipv4(wan, layout::onu_wan::mask, 0xfffffffc);
    put_ipv4(wan, layout::onu_wan::gateway, 0xdfdfdfde);
    wan.put(layout::onu_wan::name, std::string(23, '"'));
    OnuBlock wlan = a_wlan(std::string(32, '\\').c_str());
    wlan.put(layout::onu_wlan::security, wlan_wpa2_wpa3);
    wlan.put(layout::onu_wlan::hidden, 0);
    OnuBlock rule = a_rule();
    rule.put(layout::onu_acl::action, acl_permit);
    rule.put(layout::onu_acl::first_port, 65535);
    rule.put(layout::onu_acl::last_port, 65535);
    for (const auto at : {layout::onu_acl::source, layout::onu_acl::dest})
        put_ipv4(rule, at, 0xdfdfdfdf);
    for (const auto at : {layout::onu_acl::source_mask, layout::onu_acl::dest_mask})
        put_ipv4(rule, at, 0xffffffff);

    UserServices onu{max_ports, onu_id, true, {}, {}, Catv{false, -79.9}, {}, {}, {}};
    for (uint32_t index = 1; index <= max_wans; ++index)
        onu.wans.push_back({index, wan, true, 0xdfdfdfdf});
    for (uint32_t index = 1; index <= max_wlans; ++index)
        onu.wlans.push_back({index, wlan, 5});
    for (uint32_t pots = 1; pots <= 2; ++pots)
        onu.voice.push_back({pots, "90000000", "sip.example.net", false});
    for (uint32_t index = 1; index <= max_acl_rules; ++index)
        onu.acl.push_back({index, rule});
    return onu;
}

TEST(Longest, TheUserServicesOfAnOnuStayWithin10240)
{
    const UserServices onu = longest_onu(127);
    EXPECT_LE(wan_table(onu, 0).size(), small_result);
    EXPECT_LE(wlan_table(onu).size(), small_result);
    EXPECT_LE(voip_table(onu).size(), small_result);
    EXPECT_LE(acl_table(onu).size(), small_result);
}

TEST(Longest, TheUserServicesOfAPortStayWithinTheirResults)
{
    const std::vector<UserServices> onus(onus_per_port, longest_onu(127));
    EXPECT_LE(wlans_of_port_table(onus).size(), small_result);
    EXPECT_LE(wans_of_port_table(onus).size(), small_result);
    EXPECT_LE(catv_of_port_table(onus).size(), max_result);
    EXPECT_LE(sip_of_port_table(onus).size(), max_result);
}

} // namespace
} // namespace ponsim
