// These tests check UNI ports of remote ONUs: links, negotiation, rate limits, loops and classification.
#include "model/port/loops.h"
#include "uni.h"
#include "views/onu_uni.h"

namespace ponsim
{
namespace
{

constexpr uint32_t info = BSP_MSG_ONU_INFO, config = BSP_MSG_ONU_CFG;
constexpr ModelTime second = ms_per_second;

// Returns a UNI port of the fixture's ONU that has negotiated a link at its line rate.
uint32_t linked_uni(const UniFixture &fixture)
{
    const std::vector<UniConfig> configs = default_configs(1, fixture.mac, fixture.device);
    for (uint32_t index = 0; index < configs.size(); ++index)
        if (configs[index].autoneg && link_of(fixture.device.unis[index], configs[index]) == LinkMode{100, true})
            return index + 1;
    ADD_FAILURE() << "no such port";
    return 1;
}

uint32_t admin(UniFixture &fixture, uint32_t uni)
{
    return fixture.block(info, BSP_CMD_ONU_ADMIN_STATE_GET, uni, 4).get(layout::onu_admin_state::on);
}

uint32_t phy(UniFixture &fixture, uint32_t uni, layout::At<uint32_t> at)
{
    return fixture.block(info, BSP_CMD_ONU_PHY_INFO_GET, uni, 24).get(at);
}

OnuBlock abilities(std::initializer_list<uint32_t> technologies)
{
    namespace at = layout::onu_autoneg_adv;
    OnuBlock block(24);
    block.put(at::count, technologies.size());
    uint32_t number = 0;
    for (const uint32_t technology : technologies)
        block.put(at::ability[number++], technology);
    return block;
}

OnuBlock limits(uint32_t up, uint32_t burst, uint32_t down, uint32_t peak)
{
    namespace at = layout::onu_rate_limit;
    OnuBlock block(22);
    block.put(at::up_cir, up);
    block.put(at::up_cbs, burst);
    block.put(at::down_cir, down);
    block.put(at::down_pir, peak);
    block.put(at::up_on, 1);
    block.put(at::down_on, 1);
    return block;
}

TEST(OnuUni, WhatItAnswersFollowsFromItsDefaults)
{
    UniFixture fixture;
    const std::vector<UniConfig> configs = default_configs(1, fixture.mac, fixture.device);
    for (uint32_t uni = 1; uni <= configs.size(); ++uni) {
        const UniConfig &wanted = configs[uni - 1];
        namespace at = layout::onu_rate_limit;
        EXPECT_EQ(admin(fixture, uni), wanted.enabled);
        EXPECT_EQ(fixture.block(info, BSP_CMD_ONU_AUTONEG_GET, uni, 4), word_block(wanted.autoneg));
        EXPECT_EQ(fixture.block(config, BSP_CMD_ONU_PAUSE_GET, uni, 1).get(layout::onu_pause::on), wanted.pause);
        const OnuBlock limit = fixture.block(config, BSP_CMD_ONU_RATE_LIMIT_GET, uni, 22);
        EXPECT_EQ(limit.get(at::up_on), wanted.ingress.has_value());
        EXPECT_EQ(limit.get(at::up_cir), wanted.ingress.value_or(0));
        EXPECT_EQ(limit.get(at::down_pir), wanted.egress.value_or(0));
    }
}

TEST(OnuUni, APortThatIsSwitchedOffHasNoLinkOnceItKnows)
{
    UniFixture fixture;
    const uint32_t uni = linked_uni(fixture);
    ASSERT_EQ(fixture.send_setting(info, BSP_CMD_ONU_ADMIN_STATE_SET, uni, word_block(0)), BSP_OK);
    EXPECT_EQ(admin(fixture, uni), 1u) << "it does not know yet";
    EXPECT_EQ(fixture.link(uni), "100FD");
    EXPECT_FALSE(fixture.table(config, BSP_CMD_VIEW_ONU_PORT_CONFIG)[uni - 1]["admin"].GetBool())
        << "the OLT has configured it";
    fixture.pass(oam_delay);
    EXPECT_EQ(admin(fixture, uni), 0u);
    EXPECT_EQ(fixture.link(uni), "down");
    EXPECT_EQ(phy(fixture, uni, layout::onu_phy_info::link), 0u);
}

TEST(OnuUni, TheOtherPortsStayAsTheyAre)
{
    UniFixture fixture;
    const uint32_t before = admin(fixture, 2);
    ASSERT_EQ(fixture.send_setting(info, BSP_CMD_ONU_ADMIN_STATE_SET, 1, word_block(1 - admin(fixture, 1))), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(admin(fixture, 2), before);
}

TEST(OnuUni, TheNumberOfEnabledPortsCountsWhatWasTold)
{
    UniFixture fixture;
    const auto enabled = [&fixture] { return fixture.table(config, BSP_CMD_VIEW_ONU_CONFIG)[0]["enabled"].GetUint(); };
    const uint32_t before = enabled();
    ASSERT_EQ(fixture.send_setting(info, BSP_CMD_ONU_ADMIN_STATE_SET, linked_uni(fixture), word_block(0)), BSP_OK);
    EXPECT_EQ(enabled(), before - 1);
}

TEST(OnuUni, SettingsSurviveARestart)
{
    const Folder folder;
    uint32_t uni = 0;
    {
        UniFixture fixture(able, folder.file("state"));
        uni = linked_uni(fixture);
        ASSERT_EQ(fixture.send_setting(info, BSP_CMD_ONU_ADMIN_STATE_SET, uni, word_block(0)), BSP_OK);
        fixture.pass(oam_delay);
        fixture.simulator.keep_time();
    }
    UniFixture fixture(able, folder.file("state"));
    EXPECT_EQ(admin(fixture, uni), 0u);
}

TEST(OnuUni, NeitherAskedNorToldWhileItIsOfflineOrWithoutThePort)
{
    UniFixture fixture;
    for (const auto &[channel, command] : {std::pair{info, BSP_CMD_ONU_ADMIN_STATE_GET},
                                           {info, BSP_CMD_ONU_AUTONEG_LOCAL_GET},
                                           {info, BSP_CMD_ONU_AUTONEG_ADV_GET},
                                           {info, BSP_CMD_ONU_PHY_INFO_GET},
                                           {config, BSP_CMD_ONU_PAUSE_GET},
                                           {config, BSP_CMD_ONU_RATE_LIMIT_GET},
                                           {config, BSP_CMD_ONU_LOOP_DETECT_GET},
                                           {config, BSP_CMD_ONU_VLAN_GET},
                                           {info, BSP_CMD_ONU_CLASSIFICATION_GET}}) {
        EXPECT_EQ(fixture.ask(channel, command, 1, 6).status, PON_ERR_OFFLINE) << command;
        EXPECT_EQ(fixture.ask(channel, command, 0).status, PON_ERR_NO_UNI) << command;
        EXPECT_EQ(fixture.ask(channel, command, 5).status, PON_ERR_NO_UNI) << command;
    }
    EXPECT_EQ(fixture.send_setting(info, BSP_CMD_ONU_ADMIN_STATE_SET, 1, word_block(1), 6), PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.send_setting(info, BSP_CMD_ONU_CLASSIFICATION_SET, 1, OnuBlock(298), 6), PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.send_setting(config, BSP_CMD_ONU_LOOP_DETECT_SET, 5, word_block(1)), PON_ERR_NO_UNI);
}

TEST(OnuUni, SwitchesAre0Or1)
{
    UniFixture fixture;
    EXPECT_EQ(fixture.send_setting(info, BSP_CMD_ONU_ADMIN_STATE_SET, 1, word_block(2)), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send_setting(info, BSP_CMD_ONU_AUTONEG_SET, 1, word_block(0x01000000)), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send_setting(config, BSP_CMD_ONU_PAUSE_SET, 1, OnuBlock(std::string(1, 2))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send_setting(config, BSP_CMD_ONU_LOOP_DETECT_SET, 1, word_block(2)), PON_ERR_BAD_RECORD);
}

TEST(OnuUni, FlowControlNeedsFullDuplex)
{
    UniFixture fixture;
    const uint32_t uni = linked_uni(fixture);
    fixture.send_setting(config, BSP_CMD_ONU_PAUSE_SET, uni, OnuBlock(std::string(1, 1)));
    fixture.pass(oam_delay);
    EXPECT_EQ(phy(fixture, uni, layout::onu_phy_info::pause), 1u);
    fixture.send_setting(info, BSP_CMD_ONU_AUTONEG_ADV_SET, uni, abilities({25}));
    fixture.pass(oam_delay);
    EXPECT_EQ(phy(fixture, uni, layout::onu_phy_info::full_duplex), 0u);
    EXPECT_EQ(phy(fixture, uni, layout::onu_phy_info::pause), 0u);
}

TEST(OnuAutoneg, AnFePortOffersFourAbilitiesAndAGePortFive)
{
    UniFixture fe;
    EXPECT_EQ(fe.block(info, BSP_CMD_ONU_AUTONEG_LOCAL_GET, 1, 24), abilities({14, 142, 25, 252}));
    UniFixture ge("B400");
    EXPECT_EQ(ge.block(info, BSP_CMD_ONU_AUTONEG_LOCAL_GET, 1, 24), abilities({14, 142, 25, 252, 402}));
    EXPECT_EQ(ge.block(info, BSP_CMD_ONU_AUTONEG_ADV_GET, 1, 24), abilities({14, 142, 25, 252, 402}));
}

TEST(OnuAutoneg, TheLinkIsTheBestThatIsOffered)
{
    UniFixture fixture;
    const uint32_t uni = linked_uni(fixture);
    for (const auto &[offered, link] : {std::pair{abilities({142, 14}), "10FD"}, {abilities({25, 142}), "100HD"}}) {
        ASSERT_EQ(fixture.send_setting(info, BSP_CMD_ONU_AUTONEG_ADV_SET, uni, offered), BSP_OK);
        fixture.pass(oam_delay);
        EXPECT_EQ(fixture.link(uni), link);
        EXPECT_EQ(fixture.block(info, BSP_CMD_ONU_AUTONEG_ADV_GET, uni, 24), offered);
    }
    EXPECT_EQ(phy(fixture, uni, layout::onu_phy_info::speed), 100u);
    EXPECT_EQ(phy(fixture, uni, layout::onu_phy_info::line_rate), 100u);
    EXPECT_EQ(phy(fixture, uni, layout::onu_phy_info::negotiation), 2u);
}

TEST(OnuAutoneg, WithoutItTheLinkIsAsConfigured)
{
    UniFixture fixture;
    const uint32_t uni = linked_uni(fixture);
    ASSERT_EQ(fixture.send_setting(info, BSP_CMD_ONU_AUTONEG_SET, uni, word_block(0)), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(fixture.link(uni), to_text(default_configs(1, fixture.mac, fixture.device)[uni - 1].forced));
    EXPECT_EQ(phy(fixture, uni, layout::onu_phy_info::negotiation), 0u);
}

TEST(OnuAutoneg, NoCommonModeIsNoLink)
{
    const Uni hub{.line_rate = 100, .partner = LinkMode{10, false}};
    UniConfig offers{};
    offers.enabled = offers.autoneg = true;
    EXPECT_EQ(link_of(hub, offers), (LinkMode{10, false}));
    offers.offered = 0b1110; // all but 10BASE-T
    EXPECT_EQ(link_of(hub, offers), std::nullopt);
}

TEST(OnuAutoneg, OnlyWhatThePortCanIsOfferedOnceAndAtLeastOne)
{
    UniFixture fixture;
    OnuBlock behind = abilities({14});
    behind.put(layout::onu_autoneg_adv::ability[1], 142);
    OnuBlock many = abilities({14});
    many.put(layout::onu_autoneg_adv::count, 6);
    for (const OnuBlock &bad : {abilities({}), abilities({402}), abilities({14, 14}), abilities({1}), behind, many})
        EXPECT_EQ(fixture.send_setting(info, BSP_CMD_ONU_AUTONEG_ADV_SET, 1, bad), PON_ERR_BAD_RECORD);
}

TEST(OnuRateLimit, IsAnsweredAndShownAsItWasTold)
{
    UniFixture fixture;
    const OnuBlock configured = limits(2000, 1522, 3000, 4000);
    ASSERT_EQ(fixture.send_setting(config, BSP_CMD_ONU_RATE_LIMIT_SET, 1, configured), BSP_OK);
    fixture.pass(oam_delay);
    EXPECT_EQ(fixture.block(config, BSP_CMD_ONU_RATE_LIMIT_GET, 1, 22), configured);
    const rapidjson::Document rows = fixture.table(config, BSP_CMD_VIEW_ONU_PORT_CONFIG);
    EXPECT_EQ(rows[0]["ingress"].GetUint(), 2000u);
    EXPECT_EQ(rows[0]["egress"].GetUint(), 4000u);
    ASSERT_EQ(fixture.send_setting(config, BSP_CMD_ONU_RATE_LIMIT_SET, 1, OnuBlock(22)), BSP_OK);
    EXPECT_TRUE(fixture.table(config, BSP_CMD_VIEW_ONU_PORT_CONFIG)[0]["ingress"].IsNull());
}

TEST(OnuRateLimit, HasBounds)
{
    UniFixture fixture;
    OnuBlock wrong_switch = limits(1, 1522, 1, 1);
    wrong_switch.put(layout::onu_rate_limit::down_on, 2);
    OnuBlock excess = limits(1, 1522, 1, 1);
    excess.put(layout::onu_rate_limit::up_ebs, 0x1000000);
    for (const OnuBlock &bad : {limits(0, 1522, 1, 1), limits(max_rate_limit + 1, 1522, 1, 1), limits(1, 1521, 1, 1),
                                limits(1, 0x1000000, 1, 1), limits(1, 1522, 0, 0), limits(1, 1522, 2, 1),
                                limits(1, 1522, 1, max_rate_limit + 1), wrong_switch, excess})
        EXPECT_EQ(fixture.send_setting(config, BSP_CMD_ONU_RATE_LIMIT_SET, 1, bad), PON_ERR_BAD_RECORD);
    const OnuBlock most = limits(max_rate_limit, 0xffffff, max_rate_limit, max_rate_limit);
    EXPECT_EQ(fixture.send_setting(config, BSP_CMD_ONU_RATE_LIMIT_SET, 1, most), BSP_OK);
}

// In this fixture the OLT detects loops, and there is one behind UNI port 1.
struct LoopedFixture : UniFixture {
    LoopedFixture()
    {
        simulator.change(detect_loops(simulator.olt(), 1).change);
        simulator.change(set_loop(simulator.olt(), {1, mac, 1}, true).change);
    }
    std::pair<uint32_t, uint32_t> state()
    {
        namespace at = layout::onu_loop_detect;
        const OnuBlock answer = block(config, BSP_CMD_ONU_LOOP_DETECT_GET, 1, 8);
        return {answer.get(at::on), answer.get(at::state)};
    }
};

TEST(OnuLoopDetect, SeesALoopAndThatThePortIsShutForIt)
{
    LoopedFixture fixture;
    EXPECT_EQ(fixture.state(), std::pair(1u, 1u));
    fixture.pass(5 * second);
    EXPECT_EQ(fixture.state(), std::pair(1u, 2u));
}

TEST(OnuLoopDetect, SeesAndShutsNothingWhileItIsOff)
{
    LoopedFixture fixture;
    ASSERT_EQ(fixture.send_setting(config, BSP_CMD_ONU_LOOP_DETECT_SET, 1, word_block(0)), BSP_OK);
    fixture.pass(10 * second);
    EXPECT_EQ(fixture.state(), std::pair(0u, 0u));
    EXPECT_FALSE(fixture.simulator.olt().shut({1, fixture.mac, 1}));
}

TEST(OnuLoopDetect, ShutsAnIntervalAfterTheOnuLearnedThatItIsOn)
{
    LoopedFixture fixture;
    ASSERT_EQ(fixture.send_setting(config, BSP_CMD_ONU_LOOP_DETECT_SET, 1, word_block(0)), BSP_OK);
    fixture.pass(10 * second);
    ASSERT_EQ(fixture.send_setting(config, BSP_CMD_ONU_LOOP_DETECT_SET, 1, word_block(1)), BSP_OK);
    fixture.pass(oam_delay + 5 * second - 1);
    EXPECT_EQ(fixture.state(), std::pair(1u, 1u));
    fixture.pass(1);
    EXPECT_EQ(fixture.state(), std::pair(1u, 2u));
}

// RuleBytes are a rule of one condition.
struct RuleBytes {
    uint8_t precedence, queue, mark, field, low_byte, op;
};

OnuBlock rules(uint8_t action, std::initializer_list<RuleBytes> list)
{
    namespace at = layout::onu_classification;
    OnuBlock block(298);
    block.put(at::action, action);
    block.put(at::count, list.size());
    uint32_t number = 0;
    for (const RuleBytes &rule : list) {
        block.put(at::precedence[number], rule.precedence);
        block.put(at::length[number], 11);
        block.put(at::queue[number], rule.queue);
        block.put(at::mark[number], rule.mark);
        block.put(at::entries[number], 1);
        block.put(at::field_a[number], rule.field);
        block.put(byte_of(at::value_a[number], 5), rule.low_byte);
        block.put(at::operator_a[number], rule.op);
        ++number;
    }
    return block;
}

struct ClassFixture : UniFixture {
    uint32_t change(const OnuBlock &block)
    {
        const uint32_t status = send_setting(info, BSP_CMD_ONU_CLASSIFICATION_SET, 1, block);
        pass(oam_delay);
        return status;
    }
    OnuBlock configured() { return block(info, BSP_CMD_ONU_CLASSIFICATION_GET, 1, 298); }
};

constexpr RuleBytes voice{3, 3, 7, 2, 7, 1}, video{5, 2, 255, 3, 100, 1}, rest{9, 0, 255, 0, 0, 7};

TEST(OnuClassification, RulesAreAddedAndComeInOrderOfPrecedence)
{
    ClassFixture fixture;
    EXPECT_EQ(fixture.configured(), rules(1, {}));
    ASSERT_EQ(fixture.change(rules(1, {rest, voice})), BSP_OK);
    ASSERT_EQ(fixture.change(rules(1, {video})), BSP_OK);
    EXPECT_EQ(fixture.configured(), rules(1, {voice, video, rest}));
}

TEST(OnuClassification, ARuleTakesThePlaceOfAnother)
{
    ClassFixture fixture;
    ASSERT_EQ(fixture.change(rules(1, {voice, rest})), BSP_OK);
    RuleBytes other = voice;
    other.queue = 1;
    ASSERT_EQ(fixture.change(rules(1, {other})), BSP_OK);
    EXPECT_EQ(fixture.configured(), rules(1, {other, rest}));
}

TEST(OnuClassification, RulesAreDeletedByPrecedenceOrAll)
{
    ClassFixture fixture;
    ASSERT_EQ(fixture.change(rules(1, {voice, video, rest})), BSP_OK);
    ASSERT_EQ(fixture.change(rules(0, {video})), BSP_OK);
    EXPECT_EQ(fixture.configured(), rules(1, {voice, rest}));
    EXPECT_EQ(fixture.change(rules(2, {voice})), PON_ERR_BAD_RECORD);
    ASSERT_EQ(fixture.change(rules(2, {})), BSP_OK);
    EXPECT_EQ(fixture.configured(), rules(1, {}));
}

TEST(OnuClassification, ThereAre8RulesAtMost)
{
    ClassFixture fixture;
    for (uint8_t precedence = 1; precedence <= 8; ++precedence)
        ASSERT_EQ(fixture.change(rules(1, {{precedence, 0, 255, 0, 0, 7}})), BSP_OK);
    EXPECT_EQ(fixture.change(rules(1, {rest})), PON_ERR_TABLE_FULL);
    OnuBlock nine = rules(0, {});
    nine.put(layout::onu_classification::count, 9);
    EXPECT_EQ(fixture.change(nine), PON_ERR_BAD_RECORD);
}

TEST(OnuClassification, QueuesBeyondThoseOfTheOnuItIsNotAbleTo)
{
    ClassFixture fixture; // the ONU has 4 queues
    EXPECT_EQ(fixture.change(rules(1, {{1, 4, 255, 0, 0, 7}})), PON_ERR_NOT_ABLE);
    EXPECT_EQ(fixture.change(rules(1, {{1, 8, 255, 0, 0, 7}})), PON_ERR_BAD_RECORD);
}

TEST(OnuClassification, WhatMakesNoSenseIsRefused)
{
    ClassFixture fixture;
    OnuBlock no_entry = rules(1, {voice});
    no_entry.put(layout::onu_classification::entries[0], 0);
    OnuBlock five_entries = rules(1, {voice});
    five_entries.put(layout::onu_classification::entries[0], 5);
    constexpr RuleBytes wrong_mark{1, 0, 8, 0, 0, 7}, wrong_field{1, 0, 255, 12, 0, 1},
        wrong_operator{1, 0, 255, 0, 0, 8}, too_wide{1, 0, 255, 2, 8, 4};
    for (const OnuBlock &bad : {no_entry, five_entries, rules(3, {}), rules(1, {voice, voice}), rules(1, {wrong_mark}),
                                rules(1, {wrong_field}), rules(1, {wrong_operator}), rules(1, {too_wide})})
        EXPECT_EQ(fixture.change(bad), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.configured(), rules(1, {}));
}

// Returns the text in an answer.
std::string text_of(const Reply &reply)
{
    return reply.answer ? reply.answer->c_str() + offsetof(bsp_onu_msg, onu_data) : "no answer";
}

TEST(OnuLinkState, IsATextInTheAnswer)
{
    UniFixture fixture;
    const uint32_t uni = linked_uni(fixture);
    const Reply reply = fixture.ask(config, BSP_CMD_ONU_LINK_STATE_GET);
    EXPECT_EQ(text_of(reply), reply.result);
    const rapidjson::Document rows = parse(text_of(reply));
    ASSERT_EQ(rows.Size(), fixture.device.unis.size());
    EXPECT_EQ(rows[uni - 1]["uni"].GetUint(), uni);
    EXPECT_STREQ(rows[uni - 1]["link"].GetString(), "100FD");
    EXPECT_FALSE(rows[uni - 1]["shut"].GetBool());
}

TEST(OnuLinkState, OfAnOnuThatIsOfflineIsUnknown)
{
    UniFixture fixture;
    const rapidjson::Document rows = parse(text_of(fixture.ask(config, BSP_CMD_ONU_LINK_STATE_GET, 0, 6)));
    for (const auto &row : rows.GetArray())
        EXPECT_TRUE(row["link"].IsNull());
}

TEST(OnuLinkState, OfNoOnuIsAStatusAndATextOfNoRows)
{
    UniFixture fixture;
    const Reply reply = fixture.ask(config, BSP_CMD_ONU_LINK_STATE_GET, 0, 7);
    EXPECT_EQ(reply.status, PON_ERR_NOT_BOUND);
    EXPECT_EQ(text_of(reply), "[]");
}

TEST(OnuLinkState, OfTheLargestOnuFitsTheAnswer)
{
    const std::vector<UniLink> unis(max_unis, UniLink{false, "1000FD", false});
    EXPECT_LE(onu_links_table(unis).size(), 1535u);
}

} // namespace
} // namespace ponsim
