// These tests check LOIDs, the OUI, UNI profiles, the configuration of ONUs as one block, and the ARP table.
#include "model/onu/onu_config.h"

#include <set>

#include "forwarding.h"
#include "model/lifecycle/registration.h"
#include "model/onu/ipv4.h"
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

uint32_t set_oui(ServiceFixture &fixture, const Oui &oui)
{
    bsp_pon_msg record = record_of(BSP_CMD_OUI_SET);
    put(record, layout::oui::oui, oui);
    return fixture.send(record);
}

constexpr Oui another_oui{0, 1, 2};

// Only port 1 of this fixture has ONUs, and none of them is silent.
struct LoidFixture : ServiceFixture {
    explicit LoidFixture(AuthMode mode = AuthMode::loid, const std::string &file = {})
        : ServiceFixture({.seed = 1, .ports = 2, .arrivals = 4, .silent = 0}, file)
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
    LoidFixture fixture;
    ASSERT_EQ(fixture.add(fixture.onu().loid), BSP_OK);
    EXPECT_EQ(fixture.simulator.olt().id_at(1, fixture.onu().mac), 1u);
    EXPECT_EQ(fixture.port(1).authentication.mode, AuthMode::loid) << "the mode stays";
}

TEST(Loid, ThatIsDeletedTurnsItsOnuAway)
{
    LoidFixture fixture;
    fixture.add(fixture.onu().loid);
    ASSERT_EQ(fixture.send(loid_record(BSP_CMD_LOID_DELETE, fixture.onu().loid)), BSP_OK);
    EXPECT_EQ(fixture.state(), OnuState::unauthenticated);
    EXPECT_EQ(fixture.send(loid_record(BSP_CMD_LOID_DELETE, fixture.onu().loid)), PON_ERR_NOT_LISTED);
}

TEST(Loid, MustBeThereAndShort)
{
    LoidFixture fixture;
    EXPECT_EQ(fixture.add(""), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.add(std::string(25, 'a')), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(loid_record(BSP_CMD_LOID_ADD, "a", std::string(13, 'p'))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(loid_record(BSP_CMD_LOID_DELETE, "")), PON_ERR_BAD_RECORD);
    bsp_pon_msg elsewhere = loid_record(BSP_CMD_LOID_ADD, "a");
    elsewhere.pon_port = 3;
    EXPECT_EQ(fixture.send(elsewhere), PON_ERR_NO_PORT);
}

TEST(LoidList, IsOfAPortOrOfAll)
{
    LoidFixture fixture;
    const std::string loid = fixture.onu().loid;
    fixture.send(loid_record(BSP_CMD_LOID_ADD, loid, "secret"));
    bsp_pon_msg elsewhere = loid_record(BSP_CMD_LOID_ADD, "absent");
    elsewhere.pon_port = 2;
    fixture.send(elsewhere);
    const std::string of_port_1 = R"({"pon_port":1,"loid":")" + loid + R"(","has_password":true,"mac":")" +
                                  text::mac_text(fixture.onu().mac) + R"(","onu_id":1})";
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_LOID_LIST, 1), '[' + of_port_1 + ']');
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_LOID_LIST, 0),
              '[' + of_port_1 + R"(,{"pon_port":2,"loid":"absent","has_password":false,"mac":null,"onu_id":null}])");
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_VIEW_LOID_LIST, 3)).status, PON_ERR_NO_PORT);
}

TEST(LoidList, OfAllPortsIsNeverCut)
{
    Change records;
    for (uint32_t pon_port = 1; pon_port <= max_ports; ++pon_port)
        for (uint32_t n = 0; n < max_auth_records; ++n)
            records.put<LoidPassword>({pon_port, std::string(21, '"') + std::to_string(100 + n)}, {"password"});
    ServiceFixture fixture({.seed = 1, .ports = max_ports, .arrivals = 0, .silent = 0}, records);
    const std::string text = fixture.view(BSP_CMD_VIEW_LOID_LIST);
    EXPECT_LE(text.size(), max_result);
    EXPECT_EQ(parse(text).Size(), max_ports * max_auth_records);
}

TEST(ExtendedOam, WithAnotherOuiAnOnuCannotProveItselfByLoid)
{
    LoidFixture fixture;
    fixture.add(fixture.onu().loid);
    ASSERT_EQ(set_oui(fixture, another_oui), BSP_OK);
    EXPECT_EQ(fixture.state(), OnuState::unauthenticated);
    fixture.add(fixture.port(1).arrivals[1].loid);
    EXPECT_FALSE(fixture.simulator.olt().find(fixture.port(1).arrivals[1].mac)) << "nor is it let in";
}

TEST(ExtendedOam, WithItsOwnOuiItCanAgain)
{
    LoidFixture fixture;
    fixture.add(fixture.onu().loid);
    set_oui(fixture, another_oui);
    fixture.add(fixture.port(1).arrivals[1].loid);
    ASSERT_EQ(set_oui(fixture, onus_oui), BSP_OK);
    EXPECT_EQ(fixture.state(), OnuState::online);
    EXPECT_EQ(fixture.simulator.olt().id_at(1, fixture.port(1).arrivals[1].mac), 2u);
}

TEST(ExtendedOam, RaisesAnAlarmOfEachOnuThatIsTurnedAwayForItsLack)
{
    LoidFixture fixture;
    fixture.add(fixture.onu().loid);
    const AlarmAt alarm{fixture.onu().mac, static_cast<uint32_t>(Alarm::auth_failed)};
    const uint32_t before = fixture.port(1).alarms.at(alarm).count; // the ONU was turned away until it had a record
    set_oui(fixture, another_oui);
    EXPECT_EQ(fixture.port(1).alarms.at(alarm).count, before + 1);
}

TEST(ExtendedOam, IsNotNeededByTheMacAddressOrByAConfirmedOnu)
{
    for (const AuthMode mode : {AuthMode::mac, AuthMode::mac_or_loid}) {
        LoidFixture fixture(mode);
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 1, fixture.onu().mac));
        set_oui(fixture, another_oui);
        EXPECT_EQ(fixture.state(), OnuState::online);
    }
    LoidFixture fixture;
    fixture.add(fixture.onu().loid);
    set_oui(fixture, another_oui);
    fixture.send(record_of(BSP_CMD_ONU_CONFIRM, 1, 1));
    EXPECT_EQ(fixture.state(), OnuState::online);
}

TEST(ExtendedOam, WithoutItTheTrafficOfAnOnuThatIsTurnedAwayEnds)
{
    LoidFixture fixture;
    fixture.add(fixture.onu().loid);
    set_oui(fixture, another_oui);
    const Olt &olt = fixture.simulator.olt();
    const Offered before = fixture.port(1).traffic.offered(olt.now());
    fixture.simulator.advance(olt.now() + 60 * ms_per_second);
    EXPECT_EQ(fixture.port(1).traffic.offered(olt.now()).frames, before.frames);
    EXPECT_TRUE(olt.fdb().entries({.network = false, .port = 1}, olt.now()).empty());
}

TEST(ExtendedOam, TheOuiIsKept)
{
    const Folder folder;
    {
        LoidFixture fixture(AuthMode::loid, folder.file("state"));
        fixture.add(fixture.onu().loid);
        set_oui(fixture, another_oui);
    }
    LoidFixture fixture(AuthMode::loid, folder.file("state"));
    EXPECT_EQ(fixture.state(), OnuState::unauthenticated);
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

uint32_t set_profile(ServiceFixture &fixture, uint32_t id, const OnuBlock &block, uint32_t use = 1)
{
    bsp_pon_msg record = record_of(BSP_CMD_UNI_PROFILE_SET, id);
    record.arg_value = use;
    block.bytes().copy(reinterpret_cast<char *>(record.data429), uni_profile_size, 1);
    return fixture.send(record);
}

uint32_t configure(UniFixture &fixture, uint32_t uni, const OnuBlock &block, uint32_t onu_id = 5)
{
    return fixture.send_setting(config, BSP_CMD_ONU_PORT_CONFIG_SET, uni, block, onu_id);
}

uint32_t batch(ServiceFixture &fixture)
{
    return fixture.ask(record_of(BSP_CMD_ONU_CONFIG_BATCH), catalogue::Call::set).status;
}

uint32_t limit(UniFixture &fixture, uint32_t uni)
{
    return fixture.block(config, BSP_CMD_ONU_RATE_LIMIT_GET, uni, 22).get(layout::onu_rate_limit::up_cir);
}

TEST(OnuPortConfig, IsAnsweredByTheQueriesOfItsParts)
{
    UniFixture fixture;
    ASSERT_EQ(configure(fixture, 2, port_block()), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(fixture.block(info, BSP_CMD_ONU_ADMIN_STATE_GET, 2, 4), word_block(1));
    EXPECT_EQ(fixture.block(info, BSP_CMD_ONU_AUTONEG_GET, 2, 4), word_block(1));
    EXPECT_EQ(fixture.block(config, BSP_CMD_ONU_PAUSE_GET, 2, 1).get(layout::onu_pause::on), 1);
    EXPECT_EQ(limit(fixture, 2), 2000u);
    const OnuBlock vlan = fixture.block(config, BSP_CMD_ONU_VLAN_GET, 2, 159);
    EXPECT_EQ(vlan.get(layout::onu_vlan::mode), 1);
    EXPECT_EQ(vlan.get(layout::onu_vlan::pvid), 77);
    EXPECT_EQ(vlan.get(layout::onu_vlan::tpid), 0x8100);
}

TEST(OnuPortConfig, ShowsInTheViewBeforeTheOnuHasIt)
{
    UniFixture fixture;
    configure(fixture, 2, trunk_block());
    EXPECT_NE(limit(fixture, 2), 2000u);
    const rapidjson::Document rows = fixture.table(config, BSP_CMD_VIEW_ONU_PORT_CONFIG);
    EXPECT_EQ(rows[1]["ingress"].GetUint(), 2000u);
    EXPECT_STREQ(rows[1]["vlan_mode"].GetString(), "trunk");
    EXPECT_STREQ(rows[1]["vlans"].GetString(), "5");
}

TEST(OnuPortConfig, IsToldAsAWholeOrNotAtAll)
{
    UniFixture fixture;
    const uint32_t before = limit(fixture, 1);
    OnuBlock bad = port_block();
    bad.put(at::pvid, 4095);
    EXPECT_EQ(configure(fixture, 1, bad), PON_ERR_BAD_RECORD);
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 1), before);
    UniFixture unable("E020");
    EXPECT_EQ(configure(unable, 1, trunk_block()), PON_ERR_NOT_ABLE);
}

TEST(OnuPortConfig, NeedsThePortAndAnOnuThatIsOnline)
{
    UniFixture fixture;
    EXPECT_EQ(configure(fixture, 5, port_block()), PON_ERR_NO_UNI);
    EXPECT_EQ(configure(fixture, 1, port_block(), 6), PON_ERR_OFFLINE);
}

TEST(UniProfile, IsTakenByAPort)
{
    UniFixture fixture;
    ASSERT_EQ(set_profile(fixture, 3, port_block()), BSP_OK);
    ASSERT_EQ(configure(fixture, 2, of_profile(3)), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 2), 2000u);
    EXPECT_EQ(configure(fixture, 2, of_profile(4)), PON_ERR_NO_UNI_PROFILE);
}

TEST(UniProfile, HasANumberAndMakesSense)
{
    UniFixture fixture;
    EXPECT_EQ(set_profile(fixture, 0, port_block()), PON_ERR_NO_UNI_PROFILE);
    EXPECT_EQ(set_profile(fixture, 33, port_block()), PON_ERR_NO_UNI_PROFILE);
    EXPECT_EQ(set_profile(fixture, 32, trunk_block()), BSP_OK);
    EXPECT_EQ(set_profile(fixture, 1, port_block(), 2), PON_ERR_BAD_RECORD);
    for (const layout::At<uint8_t> flag :
         {at::admin, at::autoneg, at::pause, at::up_on, at::down_on, at::vlan_mode, at::vlans}) {
        OnuBlock bad = port_block();
        bad.put(flag, 9);
        EXPECT_EQ(set_profile(fixture, 1, bad), PON_ERR_BAD_RECORD) << flag.offset;
    }
}

TEST(UniProfile, IsDeletedWhereThereIsOne)
{
    UniFixture fixture;
    EXPECT_EQ(set_profile(fixture, 3, port_block(), 0), PON_ERR_NO_UNI_PROFILE);
    set_profile(fixture, 3, port_block());
    EXPECT_EQ(set_profile(fixture, 3, OnuBlock(port_config_size), 0), BSP_OK);
    EXPECT_EQ(fixture.ServiceFixture::ask(record_of(BSP_CMD_VIEW_UNI_PROFILE, 3)).status, PON_ERR_NO_UNI_PROFILE);
}

TEST(UniProfile, IsShownWithThePortsThatTookIt)
{
    UniFixture fixture;
    set_profile(fixture, 3, trunk_block());
    configure(fixture, 1, of_profile(3));
    configure(fixture, 4, of_profile(3));
    const std::string row = R"({"id":3,"admin":true,"autoneg":true,"pause":true,"up_cir":2000,"up_cbs":2048,)"
                            R"("up_ebs":0,"down_cir":null,"down_pir":null,"vlan_mode":"trunk","pvid":77,)"
                            R"("priority":3,"tpid":33024,"vlans":"5","ports":2})";
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_UNI_PROFILE, 3), '[' + row + ']');
    set_profile(fixture, 9, port_block());
    const rapidjson::Document all = parse(fixture.view(BSP_CMD_VIEW_UNI_PROFILE));
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
    UniFixture fixture;
    for (uint32_t id = 1; id <= max_uni_profiles; ++id)
        ASSERT_EQ(set_profile(fixture, id, longest), BSP_OK);
    const std::string text = fixture.view(BSP_CMD_VIEW_UNI_PROFILE);
    // The number of ports may have three digits more.
    EXPECT_LE(text.size() + 3 * max_uni_profiles, 10240u);
    EXPECT_EQ(parse(text).Size(), max_uni_profiles);
}

TEST(OnuConfigBatch, TellsPortsWhatBecameDifferentOfTheirProfile)
{
    UniFixture fixture;
    set_profile(fixture, 3, port_block());
    configure(fixture, 1, of_profile(3));
    set_profile(fixture, 3, port_block(4000));
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 1), 2000u) << "not before the batch";
    const uint32_t other = limit(fixture, 2);
    ASSERT_EQ(batch(fixture), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 1), 4000u);
    EXPECT_EQ(limit(fixture, 2), other);
}

TEST(OnuConfigBatch, LeavesAPortWhoseProfileIsAsItTookIt)
{
    UniFixture fixture;
    set_profile(fixture, 3, port_block());
    configure(fixture, 1, of_profile(3));
    fixture.send_setting(config, BSP_CMD_ONU_RATE_LIMIT_SET, 1, OnuBlock(22));
    batch(fixture);
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 1), 0u);
}

TEST(OnuConfigBatch, LeavesAPortThatWasToldSettingsOfItsOwnOrLostItsProfile)
{
    UniFixture fixture;
    set_profile(fixture, 3, port_block());
    set_profile(fixture, 4, port_block(3000));
    configure(fixture, 1, of_profile(3));
    configure(fixture, 2, of_profile(4));
    configure(fixture, 1, port_block(5000));
    set_profile(fixture, 3, port_block(4000));
    set_profile(fixture, 4, port_block(), 0);
    ASSERT_EQ(batch(fixture), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 1), 5000u);
    EXPECT_EQ(limit(fixture, 2), 3000u);
}

TEST(OnuConfigBatch, FindsAnOnuThatWasOfflineNextTime)
{
    UniFixture fixture;
    set_profile(fixture, 3, port_block());
    configure(fixture, 1, of_profile(3));
    set_profile(fixture, 3, port_block(4000));
    fixture.simulator.change(set_power(fixture.simulator.olt(), 1, fixture.mac, false).change);
    ASSERT_EQ(batch(fixture), BSP_OK);
    fixture.simulator.change(set_power(fixture.simulator.olt(), 1, fixture.mac, true).change);
    fixture.settle();
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 1), 2000u);
    ASSERT_EQ(batch(fixture), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 1), 4000u);
}

TEST(OnuConfigBatch, LeavesAPortThatIsNotAbleAndSaysSo)
{
    UniFixture fixture("E020");
    set_profile(fixture, 3, port_block());
    ASSERT_EQ(configure(fixture, 1, of_profile(3)), BSP_OK);
    set_profile(fixture, 3, trunk_block());
    fixture.simulator.take_log();
    ASSERT_EQ(batch(fixture), BSP_OK);
    EXPECT_EQ(fixture.simulator.take_log(),
              std::vector<std::string>{"UNI port 1 of ONU 1/5 is not able to do what UNI profile 3 asks for, and stays "
                                       "as it is"});
    fixture.pass(oam_delay);
    EXPECT_EQ(fixture.block(config, BSP_CMD_ONU_VLAN_GET, 1, 159).get(layout::onu_vlan::pvid), 77);
}

TEST(OnuConfigBatch, IsOfAllZeros)
{
    UniFixture fixture;
    EXPECT_EQ(fixture.ServiceFixture::ask(record_of(BSP_CMD_ONU_CONFIG_BATCH, 1), catalogue::Call::set).status,
              PON_ERR_BAD_RECORD);
}

TEST(OnuConfigBatch, KnowsAfterARestartWhatPortsTook)
{
    const Folder folder;
    {
        UniFixture fixture(able, folder.file("state"));
        set_profile(fixture, 3, port_block());
        configure(fixture, 1, of_profile(3));
        set_profile(fixture, 3, port_block(4000));
        fixture.simulator.keep_time();
    }
    UniFixture fixture(able, folder.file("state"));
    ASSERT_EQ(batch(fixture), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(limit(fixture, 1), 4000u);
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

struct OnuFixture : UniFixture {
    uint32_t configure(const OnuBlock &block) { return send_setting(config, BSP_CMD_ONU_CONFIG_SET, 0, block); }
    uint32_t fec() { return block(config, BSP_CMD_ONU_FEC_GET, 0, 4).get(layout::onu_fec::mode); }
    uint8_t multicast() { return block(config, BSP_CMD_ONU_MC_SWITCH_GET, 0, 1).get(layout::onu_mc_switch::mode); }
    OnuBlock fast_leave() { return block(config, BSP_CMD_ONU_FAST_LEAVE_GET, 0, 4); }
    OnuBlock management() { return block(config, BSP_CMD_ONU_MGMT_GET, 0, 17); }
};

TEST(OnuConfig, AllOfItIsAnsweredByTheQueriesOfItsParts)
{
    OnuFixture fixture;
    ASSERT_EQ(fixture.configure(onu_block(15)), BSP_OK);
    EXPECT_EQ(fixture.fec(), 3u) << "it does not know yet";
    fixture.pass(oam_delay);
    EXPECT_EQ(fixture.fec(), 2u);
    EXPECT_EQ(fixture.multicast(), 1);
    EXPECT_EQ(fixture.fast_leave(), word_block(1));
    EXPECT_EQ(fixture.management().bytes(), onu_block(15).bytes().substr(12, 17));
}

TEST(OnuConfig, OnlyWhatIsNamedIsSet)
{
    OnuFixture fixture;
    ASSERT_EQ(fixture.configure(onu_block(2)), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(fixture.multicast(), 1);
    EXPECT_EQ(fixture.fec(), 3u);
    EXPECT_EQ(fixture.fast_leave(), word_block(0));
    EXPECT_EQ(fixture.management(), OnuBlock(17));
}

TEST(OnuConfig, IsToldAsAWholeOrNotAtAll)
{
    OnuFixture fixture;
    OnuBlock bad = onu_block(9);
    bad.put(layout::onu_config_set::vlan, 4095);
    EXPECT_EQ(fixture.configure(bad), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.configure(onu_block(0)), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.configure(onu_block(16)), PON_ERR_BAD_RECORD);
    fixture.pass(oam_delay);
    EXPECT_EQ(fixture.fec(), 3u);
    EXPECT_EQ(fixture.send_setting(config, BSP_CMD_ONU_CONFIG_SET, 0, onu_block(1), 6), PON_ERR_OFFLINE);
}

rapidjson::Document arp(ServiceFixture &fixture, uint32_t pon_port)
{
    const Reply reply = fixture.ask(record_of(BSP_CMD_ARP_TABLE, pon_port));
    EXPECT_EQ(reply.status, BSP_OK);
    EXPECT_EQ(reply.file.value().name_at, offsetof(bsp_pon_msg, data429));
    return parse(reply.file.value().content);
}

TEST(Arp, HasTheStationsBehindOnusThatAreOnline)
{
    UniFixture fixture;
    EXPECT_EQ(arp(fixture, 1).Size(), 0u) << "nothing has been heard";
    fixture.pass(longest_silence);
    const std::vector<Station> stations = stations_up(1, fixture.mac, device_of(1, fixture.mac));
    const rapidjson::Document rows = arp(fixture, 1);
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
    UniFixture fixture;
    fixture.pass(longest_silence);
    fixture.simulator.change(set_power(fixture.simulator.olt(), 1, fixture.mac, false).change);
    EXPECT_EQ(arp(fixture, 1).Size(), 0u);
}

TEST(Arp, ForgetsThoseOfAnOnuThatAnotherTookThePlaceOf)
{
    UniFixture fixture;
    fixture.pass(longest_silence);
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5));
    const Mac other = fixture.port(1).arrivals[fixture.port(1).arrivals[0].mac == fixture.mac].mac;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, other));
    EXPECT_FALSE(fixture.simulator.olt().fdb().entries({.network = false}, fixture.simulator.olt().now()).empty());
    EXPECT_EQ(arp(fixture, 1).Size(), 0u);
}

TEST(Arp, GivesEachStationAPrivateAddressOfItsOwn)
{
    ServiceFixture fixture({.seed = 1, .ports = 2, .arrivals = 128, .silent = 0});
    std::set<std::string> addresses;
    uint32_t count = 0;
    for (uint32_t pon_port : {1, 2})
        for (const Arrival &arrival : fixture.port(pon_port).arrivals)
            fixture.send(record_of(BSP_CMD_ONU_BIND_AUTO, pon_port, 0, arrival.mac));
    fixture.simulator.advance(fixture.simulator.olt().now() + longest_silence);
    for (uint32_t pon_port : {1, 2}) {
        const rapidjson::Document rows = arp(fixture, pon_port);
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
    UniFixture fixture;
    for (uint32_t pon_port : {0, 2})
        EXPECT_EQ(fixture.ServiceFixture::ask(record_of(BSP_CMD_ARP_TABLE, pon_port)).status, PON_ERR_NO_PORT);
}

} // namespace
} // namespace ponsim
