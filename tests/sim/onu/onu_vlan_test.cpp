// These tests check VLANs of the UNI ports of remote ONUs.
#include "uni.h"
#include "views/onu_uni.h"

namespace ponsim
{
namespace
{

namespace at = layout::onu_vlan;

constexpr uint32_t config = BSP_MSG_ONU_CFG;

OnuBlock vlans(VlanMode mode, uint16_t pvid, std::initializer_list<Vlan> list = {})
{
    OnuBlock block(159);
    block.put(at::mode, mode);
    block.put(at::count, list.size());
    block.put(at::pvid, pvid);
    block.put(at::priority, 3);
    block.put(at::tpid, 0x88a8);
    uint32_t pair = 0;
    for (const Vlan &vlan : list) {
        block.put(at::user[pair], static_cast<uint16_t>(vlan.user));
        block.put(at::network[pair], static_cast<uint16_t>(vlan.network));
        ++pair;
    }
    return block;
}

template <class Field, class Value>
OnuBlock with(OnuBlock block, layout::At<Field> at, const Value &number)
{
    block.put(at, number);
    return block;
}

uint32_t send_setting(UniFixture &fixture, const OnuBlock &block, uint32_t uni = 1)
{
    return fixture.send_setting(config, BSP_CMD_ONU_VLAN_SET, uni, block);
}

OnuBlock configured(UniFixture &fixture, uint32_t uni = 1)
{
    return fixture.block(config, BSP_CMD_ONU_VLAN_GET, uni, 159);
}

std::string text_of(const rapidjson::Value &cell)
{
    return cell.IsNull() ? "null" : cell.GetString();
}

TEST(OnuVlan, OfAnyOnuIsAsTheTablesSayUntilItIsTold)
{
    for (const std::string_view model : {"S100", "S040", "E020", "H132", "B400"}) {
        UniFixture fixture(model);
        const rapidjson::Document rows = fixture.table(config, BSP_CMD_VIEW_ONU_VLAN);
        ASSERT_EQ(rows.Size(), fixture.device.unis.size());
        for (const auto &row : rows.GetArray()) {
            const OnuBlock block = configured(fixture, row["uni"].GetUint());
            std::vector<Vlan> list;
            for (uint32_t pair = 0; pair < block.get(at::count); ++pair)
                list.push_back({block.get(at::user[pair]), block.get(at::network[pair])});
            EXPECT_EQ(text_of(row["vlan_mode"]), to_text(VlanMode{block.get(at::mode)}));
            EXPECT_EQ(row["pvid"].GetUint(), block.get(at::pvid));
            EXPECT_EQ(row["priority"].GetUint(), block.get(at::priority));
            EXPECT_EQ(row["tpid"].GetUint(), block.get(at::tpid));
            EXPECT_EQ(text_of(row["vlans"]), list.empty() ? "null" : to_text(list));
        }
    }
}

TEST(OnuVlan, WhatAnOnuHasCanBeToldAgain)
{
    for (const std::string_view model : {"S100", "S040", "E020", "H132", "B400"}) {
        UniFixture fixture(model);
        for (uint32_t uni = 1; uni <= fixture.device.unis.size(); ++uni)
            EXPECT_EQ(send_setting(fixture, configured(fixture, uni), uni), BSP_OK) << model << uni;
    }
}

TEST(OnuVlan, TheOltShowsItAtOnceAndTheOnuHasItLater)
{
    UniFixture fixture;
    const OnuBlock before = configured(fixture);
    const OnuBlock trunk = vlans(VlanMode::trunk, 4094, {{1, 1}, {4094, 4094}});
    ASSERT_EQ(send_setting(fixture, trunk), BSP_OK);
    EXPECT_EQ(configured(fixture), before);
    for (const uint32_t view : {BSP_CMD_VIEW_ONU_VLAN, BSP_CMD_VIEW_ONU_PORT_CONFIG}) {
        const rapidjson::Document rows = fixture.table(config, view);
        EXPECT_EQ(text_of(rows[0]["vlan_mode"]), "trunk");
        EXPECT_EQ(text_of(rows[0]["vlans"]), "1,4094");
    }
    fixture.pass(oam_delay);
    EXPECT_EQ(configured(fixture), trunk);
}

TEST(OnuVlan, AllViewsOfVlansShowWhatWasTold)
{
    UniFixture fixture;
    for (uint32_t uni = 1; uni <= max_unis; ++uni)
        ASSERT_EQ(send_setting(fixture, vlans(VlanMode::translation, 7, {{10, 110}, {20, 120}}), uni), BSP_OK);
    const rapidjson::Document modes = fixture.table(BSP_MSG_ONU_SNMP, BSP_CMD_VIEW_VLAN_MODE_SNMP);
    EXPECT_EQ(modes[0]["onu_id"].GetUint(), 5u);
    EXPECT_EQ(modes[0]["transl"].GetUint(), 4u);
    EXPECT_EQ(fixture.table(BSP_MSG_ONU_SNMP, BSP_CMD_VIEW_VLAN_LIST_SNMP)[0]["vlans"].GetUint(), 8u);
}

TEST(OnuVlan, SurviveARestart)
{
    const Folder folder;
    const OnuBlock tag = vlans(VlanMode::tag, 77);
    {
        UniFixture fixture(able, folder.file("state"));
        ASSERT_EQ(send_setting(fixture, tag), BSP_OK);
        fixture.pass(oam_delay);
        fixture.simulator.keep_time();
    }
    UniFixture fixture(able, folder.file("state"));
    EXPECT_EQ(configured(fixture), tag);
}

TEST(OnuVlan, NotEveryOnuTranslatesOrIsATrunk)
{
    const OnuBlock translation = vlans(VlanMode::translation, 1, {{10, 20}});
    const OnuBlock trunk = vlans(VlanMode::trunk, 1, {{10, 10}});
    UniFixture translator("S100");
    EXPECT_EQ(send_setting(translator, translation), BSP_OK);
    EXPECT_EQ(send_setting(translator, trunk), PON_ERR_NOT_ABLE);
    UniFixture neither("E020");
    EXPECT_EQ(send_setting(neither, translation), PON_ERR_NOT_ABLE);
    EXPECT_EQ(send_setting(neither, vlans(VlanMode::tag, 10)), BSP_OK);
}

TEST(OnuVlan, VlansAre1To4094)
{
    UniFixture fixture;
    for (const uint16_t wrong : {0, 4095}) {
        EXPECT_EQ(send_setting(fixture, vlans(VlanMode::tag, wrong)), PON_ERR_BAD_RECORD);
        EXPECT_EQ(send_setting(fixture, vlans(VlanMode::translation, 1, {{wrong, 5}})), PON_ERR_BAD_RECORD);
        EXPECT_EQ(send_setting(fixture, vlans(VlanMode::translation, 1, {{5, wrong}})), PON_ERR_BAD_RECORD);
    }
}

TEST(OnuVlan, WhatMakesNoSenseIsRefused)
{
    UniFixture fixture;
    const OnuBlock tag = vlans(VlanMode::tag, 10);
    for (const OnuBlock &bad :
         {vlans(VlanMode{4}, 10), vlans(VlanMode::tag, 10, {{1, 1}}), vlans(VlanMode::trunk, 10),
          vlans(VlanMode::trunk, 10, {{1, 2}}), vlans(VlanMode::translation, 10, {{20, 1}, {10, 2}}),
          vlans(VlanMode::translation, 10, {{10, 2}, {10, 3}}), vlans(VlanMode::translation, 10, {{10, 2}, {11, 2}}),
          with(tag, at::priority, 8), with(tag, at::tpid, 0x05ff), with(tag, at::user[0], 1),
          with(tag, layout::At<uint8_t>{at::tpid.offset - 1}, 1), with(tag, layout::At<uint8_t>{352 + 158}, 1),
          with(tag, at::count, 9)})
        EXPECT_EQ(send_setting(fixture, bad), PON_ERR_BAD_RECORD);
    EXPECT_EQ(send_setting(fixture, tag), BSP_OK);
}

TEST(OnuVlan, AreShownWhileTheOnuIsOfflineButNotOfNone)
{
    UniFixture fixture;
    EXPECT_EQ(fixture.table(config, BSP_CMD_VIEW_ONU_VLAN, 6).Size(), device_of(1, stranger(6)).unis.size());
    EXPECT_EQ(fixture.ask(config, BSP_CMD_VIEW_ONU_VLAN, 0, 7).status, PON_ERR_NOT_BOUND);
}

TEST(OnuVlan, TheLongestTableStaysWithin10240)
{
    UniConfig longest{};
    longest.vlan_mode = VlanMode::translation;
    longest.pvid = 4094;
    longest.tpid = 0xffff;
    longest.vlans.assign(max_vlans, {4093, 4094});
    EXPECT_LE(onu_vlans_table(16, 127, std::vector<UniConfig>(max_unis, longest)).size(), 10240u);
}

} // namespace
} // namespace ponsim
