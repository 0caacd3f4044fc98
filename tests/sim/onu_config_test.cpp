// These tests check LOIDs, the OUI, UNI profiles, the configuration of ONUs as one block, and the ARP table.
#include "model/onu/onu_config.h"

#include <set>

#include "model/lifecycle/registration.h"
#include "model/onu/ipv4.h"
#include "model/plant/station.h"
#include "uni.h"

namespace ponsim
{
namespace
{

constexpr uint32_t info = BSP_MSG_ONU_INFO, config = BSP_MSG_ONU_CFG;
namespace at = layout::onu_port_config_set;

bsp_pon_msg loid_record(uint32_t command, const std::string &loid, const std::string &password = {})
{
    bsp_pon_msg record = record_of(command, 1);
    loid.copy(record.text45, sizeof record.text45);
    password.copy(record.text109, sizeof record.text109);
    return record;
}

uint32_t set_oui(Desk &desk, const Oui &oui)
{
    bsp_pon_msg record = record_of(BSP_CMD_OUI_SET);
    put(record, layout::oui::oui, oui);
    return desk.send(record);
}

constexpr Oui another_oui{0, 1, 2};

// Only port 1 of this fixture has ONUs, and none of them is silent.
struct LoidDesk : Desk {
    explicit LoidDesk(AuthMode mode = AuthMode::loid, const std::string &file = {})
        : Desk({.seed = 1, .ports = 2, .arrivals = 4, .silent = 0}, file)
    {
        bsp_pon_msg record = record_of(BSP_CMD_AUTH_SET, 1);
        record.arg_word12 = static_cast<uint32_t>(mode);
        send(record);
    }
    const Arrival &onu() const { return port(1).arrivals[0]; }
    uint32_t add(const std::string &loid) { return send(loid_record(BSP_CMD_LOID_ADD, loid)); }
    OnuState state() const { return port(1).state(port(1).bindings[1].value()); }
};

TEST(Loid, ThatIsAddedLetsItsOnuIn)
{
    LoidDesk desk;
    ASSERT_EQ(desk.add(desk.onu().loid), BSP_OK);
    EXPECT_EQ(desk.simulator.olt().id_at(1, desk.onu().mac), 1u);
    EXPECT_EQ(desk.port(1).authentication.mode, AuthMode::loid) << "the mode stays";
}

TEST(Loid, ThatIsDeletedTurnsItsOnuAway)
{
    LoidDesk desk;
    desk.add(desk.onu().loid);
    ASSERT_EQ(desk.send(loid_record(BSP_CMD_LOID_DELETE, desk.onu().loid)), BSP_OK);
    EXPECT_EQ(desk.state(), OnuState::unauthenticated);
    EXPECT_EQ(desk.send(loid_record(BSP_CMD_LOID_DELETE, desk.onu().loid)), PON_ERR_NOT_LISTED);
}

TEST(Loid, MustBeThereAndShort)
{
    LoidDesk desk;
    EXPECT_EQ(desk.add(""), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.add(std::string(25, 'a')), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.send(loid_record(BSP_CMD_LOID_ADD, "a", std::string(13, 'p'))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.send(loid_record(BSP_CMD_LOID_DELETE, "")), PON_ERR_BAD_RECORD);
    bsp_pon_msg elsewhere = loid_record(BSP_CMD_LOID_ADD, "a");
    elsewhere.pon_port = 3;
    EXPECT_EQ(desk.send(elsewhere), PON_ERR_NO_PORT);
}

TEST(LoidList, IsOfAPortOrOfAll)
{
    LoidDesk desk;
    const std::string loid = desk.onu().loid;
    desk.send(loid_record(BSP_CMD_LOID_ADD, loid, "secret"));
    bsp_pon_msg elsewhere = loid_record(BSP_CMD_LOID_ADD, "absent");
    elsewhere.pon_port = 2;
    desk.send(elsewhere);
    const std::string of_port_1 = R"({"pon_port":1,"loid":")" + loid + R"(","has_password":true,"mac":")" +
                                  text::mac_text(desk.onu().mac) + R"(","onu_id":1})";
    EXPECT_EQ(desk.view(BSP_CMD_VIEW_LOID_LIST, 1), '[' + of_port_1 + ']');
    EXPECT_EQ(desk.view(BSP_CMD_VIEW_LOID_LIST, 0),
              '[' + of_port_1 + R"(,{"pon_port":2,"loid":"absent","has_password":false,"mac":null,"onu_id":null}])");
    EXPECT_EQ(desk.ask(record_of(BSP_CMD_VIEW_LOID_LIST, 3)).status, PON_ERR_NO_PORT);
}

TEST(LoidList, OfAllPortsIsNeverCut)
{
    Change records;
    for (uint32_t pon_port = 1; pon_port <= max_ports; ++pon_port)
        for (uint32_t n = 0; n < max_auth_records; ++n)
            records.put<LoidPassword>({pon_port, std::string(21, '"') + std::to_string(100 + n)}, {"password"});
    Desk desk({.seed = 1, .ports = max_ports, .arrivals = 0, .silent = 0}, records);
    const std::string text = desk.view(BSP_CMD_VIEW_LOID_LIST);
    EXPECT_LE(text.size(), max_result);
    EXPECT_EQ(parse(text).Size(), max_ports * max_auth_records);
}

TEST(ExtendedOam, WithAnotherOuiAnOnuCannotProveItselfByLoid)
{
    LoidDesk desk;
    desk.add(desk.onu().loid);
    ASSERT_EQ(set_oui(desk, another_oui), BSP_OK);
    EXPECT_EQ(desk.state(), OnuState::unauthenticated);
    desk.add(desk.port(1).arrivals[1].loid);
    EXPECT_FALSE(desk.simulator.olt().find(desk.port(1).arrivals[1].mac)) << "nor is it let in";
}

TEST(ExtendedOam, WithItsOwnOuiItCanAgain)
{
    LoidDesk desk;
    desk.add(desk.onu().loid);
    set_oui(desk, another_oui);
    desk.add(desk.port(1).arrivals[1].loid);
    ASSERT_EQ(set_oui(desk, onus_oui), BSP_OK);
    EXPECT_EQ(desk.state(), OnuState::online);
    EXPECT_EQ(desk.simulator.olt().id_at(1, desk.port(1).arrivals[1].mac), 2u);
}

TEST(ExtendedOam, RaisesAnAlarmOfEachOnuThatIsTurnedAwayForItsLack)
{
    LoidDesk desk;
    desk.add(desk.onu().loid);
    const auto alarm = std::pair{desk.onu().mac, static_cast<uint32_t>(Alarm::auth_failed)};
    const uint32_t before = desk.port(1).alarms.at(alarm); // the ONU was turned away until it had a record
    set_oui(desk, another_oui);
    EXPECT_EQ(desk.port(1).alarms.at(alarm), before + 1);
}

TEST(ExtendedOam, IsNotNeededByTheMacAddressOrByAConfirmedOnu)
{
    for (const AuthMode mode : {AuthMode::mac, AuthMode::mac_or_loid}) {
        LoidDesk desk(mode);
        desk.send(record_of(BSP_CMD_ONU_BIND, 1, 1, desk.onu().mac));
        set_oui(desk, another_oui);
        EXPECT_EQ(desk.state(), OnuState::online);
    }
    LoidDesk desk;
    desk.add(desk.onu().loid);
    set_oui(desk, another_oui);
    desk.send(record_of(BSP_CMD_ONU_CONFIRM, 1, 1));
    EXPECT_EQ(desk.state(), OnuState::online);
}

TEST(ExtendedOam, WithoutItTheTrafficOfAnOnuThatIsTurnedAwayEnds)
{
    LoidDesk desk;
    desk.add(desk.onu().loid);
    set_oui(desk, another_oui);
    const Olt &olt = desk.simulator.olt();
    const Offered before = desk.port(1).traffic.offered(olt.now());
    desk.simulator.advance(olt.now() + 60 * ms_per_second);
    EXPECT_EQ(desk.port(1).traffic.offered(olt.now()).frames, before.frames);
    EXPECT_TRUE(olt.fdb().entries({.network = false, .port = 1}, olt.now()).empty());
}

TEST(ExtendedOam, TheOuiIsKept)
{
    const Folder folder;
    {
        LoidDesk desk(AuthMode::loid, folder.file("state"));
        desk.add(desk.onu().loid);
        set_oui(desk, another_oui);
    }
    LoidDesk desk(AuthMode::loid, folder.file("state"));
    EXPECT_EQ(desk.state(), OnuState::unauthenticated);
}

// Returns a configuration that any ONU accepts.
OnuBlock port_block(uint32_t up = 2000)
{
    OnuBlock block(port_config_size);
    block.put(at::admin, 1);
    block.put(at::autoneg, 1);
    block.put(at::pause, 1);
    block.put(at::up_cir, up);
    block.put(at::up_cbs, 2048);
    block.put(at::up_on, 1);
    block.put(at::vlan_mode, VlanMode::tag);
    block.put(at::pvid, 77);
    block.put(at::priority, 3);
    block.put(at::tpid, 0x8100);
    return block;
}

OnuBlock trunk_block()
{
    OnuBlock block = port_block();
    block.put(at::vlan_mode, VlanMode::trunk);
    block.put(at::vlans, 1);
    block.put(at::user[0], 5);
    block.put(at::network[0], 5);
    return block;
}

OnuBlock of_profile(uint8_t id)
{
    OnuBlock block(port_config_size);
    block.put(at::profile, id);
    return block;
}

uint32_t set_profile(Desk &desk, uint32_t id, const OnuBlock &block, uint32_t use = 1)
{
    bsp_pon_msg record = record_of(BSP_CMD_UNI_PROFILE_SET, id);
    record.arg_value = use;
    block.bytes().copy(reinterpret_cast<char *>(record.data429), uni_profile_size, 1);
    return desk.send(record);
}

uint32_t configure(UniDesk &desk, uint32_t uni, const OnuBlock &block, uint32_t onu_id = 5)
{
    return desk.tell(config, BSP_CMD_ONU_PORT_CONFIG_SET, uni, block, onu_id);
}

uint32_t batch(Desk &desk)
{
    return desk.ask(record_of(BSP_CMD_ONU_CONFIG_BATCH), catalogue::Call::set).status;
}

uint32_t limit(UniDesk &desk, uint32_t uni)
{
    return desk.block(config, BSP_CMD_ONU_RATE_LIMIT_GET, uni, 22).get(layout::onu_rate_limit::up_cir);
}

TEST(OnuPortConfig, IsAnsweredByTheQueriesOfItsParts)
{
    UniDesk desk;
    ASSERT_EQ(configure(desk, 2, port_block()), BSP_OK);
    desk.pass(oam_delay);
    EXPECT_EQ(desk.block(info, BSP_CMD_ONU_ADMIN_STATE_GET, 2, 4), word_block(1));
    EXPECT_EQ(desk.block(info, BSP_CMD_ONU_AUTONEG_GET, 2, 4), word_block(1));
    EXPECT_EQ(desk.block(config, BSP_CMD_ONU_PAUSE_GET, 2, 1).get(layout::onu_pause::on), 1);
    EXPECT_EQ(limit(desk, 2), 2000u);
    const OnuBlock vlan = desk.block(config, BSP_CMD_ONU_VLAN_GET, 2, 159);
    EXPECT_EQ(vlan.get(layout::onu_vlan::mode), 1);
    EXPECT_EQ(vlan.get(layout::onu_vlan::pvid), 77);
    EXPECT_EQ(vlan.get(layout::onu_vlan::tpid), 0x8100);
}

TEST(OnuPortConfig, ShowsInTheViewBeforeTheOnuHasIt)
{
    UniDesk desk;
    configure(desk, 2, trunk_block());
    EXPECT_NE(limit(desk, 2), 2000u);
    const rapidjson::Document rows = desk.table(config, BSP_CMD_VIEW_ONU_PORT_CONFIG);
    EXPECT_EQ(rows[1]["ingress"].GetUint(), 2000u);
    EXPECT_STREQ(rows[1]["vlan_mode"].GetString(), "trunk");
    EXPECT_STREQ(rows[1]["vlans"].GetString(), "5");
}

TEST(OnuPortConfig, IsToldAsAWholeOrNotAtAll)
{
    UniDesk desk;
    const uint32_t before = limit(desk, 1);
    OnuBlock bad = port_block();
    bad.put(at::pvid, 4095);
    EXPECT_EQ(configure(desk, 1, bad), PON_ERR_BAD_RECORD);
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 1), before);
    UniDesk unable("E020");
    EXPECT_EQ(configure(unable, 1, trunk_block()), PON_ERR_NOT_ABLE);
}

TEST(OnuPortConfig, NeedsThePortAndAnOnuThatIsOnline)
{
    UniDesk desk;
    EXPECT_EQ(configure(desk, 5, port_block()), PON_ERR_NO_UNI);
    EXPECT_EQ(configure(desk, 1, port_block(), 6), PON_ERR_OFFLINE);
}

TEST(UniProfile, IsTakenByAPort)
{
    UniDesk desk;
    ASSERT_EQ(set_profile(desk, 3, port_block()), BSP_OK);
    ASSERT_EQ(configure(desk, 2, of_profile(3)), BSP_OK);
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 2), 2000u);
    EXPECT_EQ(configure(desk, 2, of_profile(4)), PON_ERR_NO_UNI_PROFILE);
}

TEST(UniProfile, HasANumberAndMakesSense)
{
    UniDesk desk;
    EXPECT_EQ(set_profile(desk, 0, port_block()), PON_ERR_NO_UNI_PROFILE);
    EXPECT_EQ(set_profile(desk, 33, port_block()), PON_ERR_NO_UNI_PROFILE);
    EXPECT_EQ(set_profile(desk, 32, trunk_block()), BSP_OK);
    EXPECT_EQ(set_profile(desk, 1, port_block(), 2), PON_ERR_BAD_RECORD);
    for (const layout::At<uint8_t> flag :
         {at::admin, at::autoneg, at::pause, at::up_on, at::down_on, at::vlan_mode, at::vlans}) {
        OnuBlock bad = port_block();
        bad.put(flag, 9);
        EXPECT_EQ(set_profile(desk, 1, bad), PON_ERR_BAD_RECORD) << flag.offset;
    }
}

TEST(UniProfile, IsDeletedWhereThereIsOne)
{
    UniDesk desk;
    EXPECT_EQ(set_profile(desk, 3, port_block(), 0), PON_ERR_NO_UNI_PROFILE);
    set_profile(desk, 3, port_block());
    EXPECT_EQ(set_profile(desk, 3, OnuBlock(port_config_size), 0), BSP_OK);
    EXPECT_EQ(desk.Desk::ask(record_of(BSP_CMD_VIEW_UNI_PROFILE, 3)).status, PON_ERR_NO_UNI_PROFILE);
}

TEST(UniProfile, IsShownWithThePortsThatTookIt)
{
    UniDesk desk;
    set_profile(desk, 3, trunk_block());
    configure(desk, 1, of_profile(3));
    configure(desk, 4, of_profile(3));
    const std::string row = R"({"id":3,"admin":true,"autoneg":true,"pause":true,"up_cir":2000,"up_cbs":2048,)"
                            R"("up_ebs":0,"down_cir":null,"down_pir":null,"vlan_mode":"trunk","pvid":77,)"
                            R"("priority":3,"tpid":33024,"vlans":"5","ports":2})";
    EXPECT_EQ(desk.view(BSP_CMD_VIEW_UNI_PROFILE, 3), '[' + row + ']');
    set_profile(desk, 9, port_block());
    const rapidjson::Document all = parse(desk.view(BSP_CMD_VIEW_UNI_PROFILE));
    ASSERT_EQ(all.Size(), 2u);
    EXPECT_EQ(all[1]["id"].GetUint(), 9u);
    EXPECT_EQ(all[1]["ports"].GetUint(), 0u);
}

TEST(UniProfile, AllOfThemFitTheirView)
{
    OnuBlock longest(port_config_size);
    longest.put(at::up_on, 1);
    longest.put(at::down_on, 1);
    for (const auto rate : {at::up_cir, at::down_cir, at::down_pir})
        longest.put(rate, max_rate_limit);
    for (const auto burst : {at::up_cbs, at::up_ebs})
        longest.put(burst, 0xffffff);
    longest.put(at::vlan_mode, VlanMode::translation);
    longest.put(at::vlans, max_vlans);
    longest.put(at::pvid, 4094);
    longest.put(at::tpid, 0xffff);
    for (uint32_t number = 0; number < max_vlans; ++number) {
        longest.put(at::user[number], 4000 + number);
        longest.put(at::network[number], 3000 + number);
    }
    UniDesk desk;
    for (uint32_t id = 1; id <= max_uni_profiles; ++id)
        ASSERT_EQ(set_profile(desk, id, longest), BSP_OK);
    const std::string text = desk.view(BSP_CMD_VIEW_UNI_PROFILE);
    // The number of ports may have three digits more.
    EXPECT_LE(text.size() + 3 * max_uni_profiles, 10240u);
    EXPECT_EQ(parse(text).Size(), max_uni_profiles);
}

TEST(OnuConfigBatch, TellsPortsWhatBecameDifferentOfTheirProfile)
{
    UniDesk desk;
    set_profile(desk, 3, port_block());
    configure(desk, 1, of_profile(3));
    set_profile(desk, 3, port_block(4000));
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 1), 2000u) << "not before the batch";
    const uint32_t other = limit(desk, 2);
    ASSERT_EQ(batch(desk), BSP_OK);
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 1), 4000u);
    EXPECT_EQ(limit(desk, 2), other);
}

TEST(OnuConfigBatch, LeavesAPortWhoseProfileIsAsItTookIt)
{
    UniDesk desk;
    set_profile(desk, 3, port_block());
    configure(desk, 1, of_profile(3));
    desk.tell(config, BSP_CMD_ONU_RATE_LIMIT_SET, 1, OnuBlock(22));
    batch(desk);
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 1), 0u);
}

TEST(OnuConfigBatch, LeavesAPortThatWasToldSettingsOfItsOwnOrLostItsProfile)
{
    UniDesk desk;
    set_profile(desk, 3, port_block());
    set_profile(desk, 4, port_block(3000));
    configure(desk, 1, of_profile(3));
    configure(desk, 2, of_profile(4));
    configure(desk, 1, port_block(5000));
    set_profile(desk, 3, port_block(4000));
    set_profile(desk, 4, port_block(), 0);
    ASSERT_EQ(batch(desk), BSP_OK);
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 1), 5000u);
    EXPECT_EQ(limit(desk, 2), 3000u);
}

TEST(OnuConfigBatch, FindsAnOnuThatWasOfflineNextTime)
{
    UniDesk desk;
    set_profile(desk, 3, port_block());
    configure(desk, 1, of_profile(3));
    set_profile(desk, 3, port_block(4000));
    desk.simulator.change(set_power(desk.simulator.olt(), 1, desk.mac, false).change);
    ASSERT_EQ(batch(desk), BSP_OK);
    desk.simulator.change(set_power(desk.simulator.olt(), 1, desk.mac, true).change);
    desk.settle();
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 1), 2000u);
    ASSERT_EQ(batch(desk), BSP_OK);
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 1), 4000u);
}

TEST(OnuConfigBatch, LeavesAPortThatIsNotAbleAndSaysSo)
{
    UniDesk desk("E020");
    set_profile(desk, 3, port_block());
    ASSERT_EQ(configure(desk, 1, of_profile(3)), BSP_OK);
    set_profile(desk, 3, trunk_block());
    desk.simulator.take_log();
    ASSERT_EQ(batch(desk), BSP_OK);
    EXPECT_EQ(desk.simulator.take_log(),
              std::vector<std::string>{"UNI port 1 of ONU 1/5 is not able to do what UNI profile 3 asks for, and stays "
                                       "as it is"});
    desk.pass(oam_delay);
    EXPECT_EQ(desk.block(config, BSP_CMD_ONU_VLAN_GET, 1, 159).get(layout::onu_vlan::pvid), 77);
}

TEST(OnuConfigBatch, IsOfAllZeros)
{
    UniDesk desk;
    EXPECT_EQ(desk.Desk::ask(record_of(BSP_CMD_ONU_CONFIG_BATCH, 1), catalogue::Call::set).status, PON_ERR_BAD_RECORD);
}

TEST(OnuConfigBatch, KnowsAfterARestartWhatPortsTook)
{
    const Folder folder;
    {
        UniDesk desk(able, folder.file("state"));
        set_profile(desk, 3, port_block());
        configure(desk, 1, of_profile(3));
        set_profile(desk, 3, port_block(4000));
        desk.simulator.keep_time();
    }
    UniDesk desk(able, folder.file("state"));
    ASSERT_EQ(batch(desk), BSP_OK);
    desk.pass(oam_delay);
    EXPECT_EQ(limit(desk, 1), 4000u);
}

constexpr uint32_t onu_config_size = 29;

OnuBlock onu_block(uint8_t parts)
{
    namespace fields = layout::onu_config_set;
    OnuBlock block(onu_config_size);
    block.put(fields::parts, parts);
    block.put(fields::multicast, 1);
    block.put(fields::fec, 2);
    block.put(fields::fast_leave, 1);
    put_ipv4(block, fields::address, 0x0a000002);
    put_ipv4(block, fields::mask, 0xffffff00);
    block.put(fields::vlan, 9);
    block.put(fields::mode, 1);
    return block;
}

struct OnuDesk : UniDesk {
    uint32_t configure(const OnuBlock &block) { return tell(config, BSP_CMD_ONU_CONFIG_SET, 0, block); }
    uint32_t fec() { return block(config, BSP_CMD_ONU_FEC_GET, 0, 4).get(layout::onu_fec::mode); }
    uint8_t multicast() { return block(config, BSP_CMD_ONU_MC_SWITCH_GET, 0, 1).get(layout::onu_mc_switch::mode); }
    OnuBlock fast_leave() { return block(config, BSP_CMD_ONU_FAST_LEAVE_GET, 0, 4); }
    OnuBlock management() { return block(config, BSP_CMD_ONU_MGMT_GET, 0, 17); }
};

TEST(OnuConfig, AllOfItIsAnsweredByTheQueriesOfItsParts)
{
    OnuDesk desk;
    ASSERT_EQ(desk.configure(onu_block(15)), BSP_OK);
    EXPECT_EQ(desk.fec(), 3u) << "it does not know yet";
    desk.pass(oam_delay);
    EXPECT_EQ(desk.fec(), 2u);
    EXPECT_EQ(desk.multicast(), 1);
    EXPECT_EQ(desk.fast_leave(), word_block(1));
    EXPECT_EQ(desk.management().bytes(), onu_block(15).bytes().substr(12, 17));
}

TEST(OnuConfig, OnlyWhatIsNamedIsSet)
{
    OnuDesk desk;
    ASSERT_EQ(desk.configure(onu_block(2)), BSP_OK);
    desk.pass(oam_delay);
    EXPECT_EQ(desk.multicast(), 1);
    EXPECT_EQ(desk.fec(), 3u);
    EXPECT_EQ(desk.fast_leave(), word_block(0));
    EXPECT_EQ(desk.management(), OnuBlock(17));
}

TEST(OnuConfig, IsToldAsAWholeOrNotAtAll)
{
    OnuDesk desk;
    OnuBlock bad = onu_block(9);
    bad.put(layout::onu_config_set::vlan, 4095);
    EXPECT_EQ(desk.configure(bad), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.configure(onu_block(0)), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.configure(onu_block(16)), PON_ERR_BAD_RECORD);
    desk.pass(oam_delay);
    EXPECT_EQ(desk.fec(), 3u);
    EXPECT_EQ(desk.tell(config, BSP_CMD_ONU_CONFIG_SET, 0, onu_block(1), 6), PON_ERR_OFFLINE);
}

rapidjson::Document arp(Desk &desk, uint32_t pon_port)
{
    const Reply reply = desk.ask(record_of(BSP_CMD_ARP_TABLE, pon_port));
    EXPECT_EQ(reply.status, BSP_OK);
    EXPECT_EQ(reply.file.value().name_at, offsetof(bsp_pon_msg, data429));
    return parse(reply.file.value().content);
}

TEST(Arp, HasTheStationsBehindOnusThatAreOnline)
{
    UniDesk desk;
    EXPECT_EQ(arp(desk, 1).Size(), 0u) << "nothing has been heard";
    desk.pass(longest_silence);
    const std::vector<Station> stations = stations_behind(1, desk.mac, device_of(1, desk.mac));
    const rapidjson::Document rows = arp(desk, 1);
    ASSERT_EQ(rows.Size(), stations.size());
    ASSERT_FALSE(stations.empty());
    const Station &first = stations.front();
    EXPECT_EQ(rows[0]["onu_id"].GetUint(), 5u);
    EXPECT_EQ(rows[0]["uni"].GetUint(), first.port);
    EXPECT_EQ(rows[0]["mac"].GetString(), text::mac_text(first.mac));
    EXPECT_EQ(rows[0]["vlan"].GetUint(), first.vlan);
    EXPECT_STREQ(rows[0]["interface"].GetString(), "pon1");
}

TEST(Arp, ForgetsThoseOfAnOnuThatGoesOffline)
{
    UniDesk desk;
    desk.pass(longest_silence);
    desk.simulator.change(set_power(desk.simulator.olt(), 1, desk.mac, false).change);
    EXPECT_EQ(arp(desk, 1).Size(), 0u);
}

TEST(Arp, ForgetsThoseOfAnOnuThatAnotherTookThePlaceOf)
{
    UniDesk desk;
    desk.pass(longest_silence);
    desk.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5));
    const Mac other = desk.port(1).arrivals[desk.port(1).arrivals[0].mac == desk.mac].mac;
    desk.send(record_of(BSP_CMD_ONU_BIND, 1, 5, other));
    EXPECT_FALSE(desk.simulator.olt().fdb().entries({.network = false}, desk.simulator.olt().now()).empty());
    EXPECT_EQ(arp(desk, 1).Size(), 0u);
}

TEST(Arp, GivesEachStationAPrivateAddressOfItsOwn)
{
    Desk desk({.seed = 1, .ports = 2, .arrivals = 128, .silent = 0});
    std::set<std::string> addresses;
    uint32_t count = 0;
    for (uint32_t pon_port : {1, 2})
        for (const Arrival &arrival : desk.port(pon_port).arrivals)
            desk.send(record_of(BSP_CMD_ONU_BIND_AUTO, pon_port, 0, arrival.mac));
    desk.simulator.advance(desk.simulator.olt().now() + longest_silence);
    for (uint32_t pon_port : {1, 2}) {
        const rapidjson::Document rows = arp(desk, pon_port);
        for (const auto &row : rows.GetArray()) {
            addresses.insert(row["ip"].GetString());
            EXPECT_EQ(std::string(row["ip"].GetString()).substr(0, 3), "10.");
            ++count;
        }
    }
    EXPECT_GT(count, 256u);
    EXPECT_EQ(addresses.size(), count);
}

TEST(Arp, IsOfAPort)
{
    UniDesk desk;
    for (uint32_t pon_port : {0, 2})
        EXPECT_EQ(desk.Desk::ask(record_of(BSP_CMD_ARP_TABLE, pon_port)).status, PON_ERR_NO_PORT);
}

} // namespace
} // namespace ponsim
