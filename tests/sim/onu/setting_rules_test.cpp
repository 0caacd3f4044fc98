// These tests hold what a setting of an ONU can be when it is loaded against what can be set. What a state file or a
// configuration may hold is what the service itself can have stored, no more and no less.
#include "model/rules/blocks.h"

#include <gmock/gmock.h>

#include "model/base/block.h"
#include "model/base/random.h"
#include "model/lifecycle/images.h"
#include "model/olt/uni_config.h"
#include "model/onu/classification.h"
#include "model/onu/gateway.h"
#include "model/onu/multicast_settings.h"
#include "model/onu/onu_config.h"
#include "model/onu/service_settings.h"
#include "store/configuration.h"
#include "uni.h"

namespace ponsim
{
namespace
{

constexpr std::string_view able_to_all = "H132"; // its first UNI port is a GE port

// A Way is how a setting is set by a request that has the block that is kept.
struct Way {
    uint32_t channel;
    uint32_t command;
    uint32_t kept; // the command under which it is kept
    uint32_t uni;  // UNI port, or the number of the setting
    OnuBlock first;
};

bool is_numbered(uint32_t kept)
{
    return kept == BSP_CMD_VIEW_ONU_WAN || kept == BSP_CMD_VIEW_ONU_WLAN || kept == BSP_CMD_VIEW_ONU_ACL;
}

OnuBlock with_byte(OnuBlock block, size_t index, char byte)
{
    std::string bytes = block.bytes();
    bytes.at(index) = byte;
    return OnuBlock(bytes);
}

OnuBlock zeros(size_t size)
{
    return OnuBlock(size);
}

// A configuration of a port as one block, made of the default ones of its parts.
OnuBlock port_config_of(const Olt &olt, const RemoteOnu &onu, uint32_t uni)
{
    const auto part = [&](uint32_t command) { return default_block(olt, onu, uni, command).bytes(); };
    return OnuBlock(std::string(1, '\0') + part(BSP_CMD_ONU_ADMIN_STATE_GET)[0] + part(BSP_CMD_ONU_AUTONEG_GET)[0] +
                    part(BSP_CMD_ONU_PAUSE_GET)[0] + part(BSP_CMD_ONU_RATE_LIMIT_GET) + std::string(2, '\0') +
                    part(BSP_CMD_ONU_VLAN_GET).substr(0, 40));
}

struct RulesFixture : UniFixture {
    Random random{1, 2};

    explicit RulesFixture(std::string_view model = able_to_all) : UniFixture(model) {}

    RemoteOnu onu(uint32_t onu_id = 5) const { return find_onu(simulator.olt(), 1, onu_id).onu; }

    std::vector<Way> ways(uint32_t onu_id = 5) const
    {
        const Olt &olt = simulator.olt();
        const RemoteOnu of = onu(onu_id);
        std::vector<Way> all;
        const auto add = [&](uint32_t channel, uint32_t command, uint32_t kept, uint32_t uni, OnuBlock first) {
            all.push_back({channel, command, kept, uni, std::move(first)});
        };
        const auto of_uni = [&](uint32_t channel, uint32_t command) {
            add(channel, command, command, 1, default_block(olt, of, 1, command));
        };
        of_uni(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ADMIN_STATE_GET);
        of_uni(BSP_MSG_ONU_INFO, BSP_CMD_ONU_AUTONEG_GET);
        of_uni(BSP_MSG_ONU_INFO, BSP_CMD_ONU_AUTONEG_ADV_GET);
        of_uni(BSP_MSG_ONU_CFG, BSP_CMD_ONU_PAUSE_GET);
        of_uni(BSP_MSG_ONU_CFG, BSP_CMD_ONU_RATE_LIMIT_GET);
        of_uni(BSP_MSG_ONU_CFG, BSP_CMD_ONU_VLAN_GET);
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_LOOP_DETECT_SET, BSP_CMD_ONU_LOOP_DETECT_GET, 1, word_block(1));
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_PORT_CONFIG_SET, BSP_CMD_ONU_PORT_CONFIG_SET, 1, port_config_of(olt, of, 1));
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_GROUP_MAX_GET, BSP_CMD_ONU_MC_GROUP_MAX_GET, 1, zeros(2));
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_VLAN_MODE_GET, BSP_CMD_ONU_MC_VLAN_MODE_GET, 1, zeros(34));
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_SWITCH_GET, BSP_CMD_ONU_MC_SWITCH_GET, 0, zeros(1));
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_FAST_LEAVE_GET, BSP_CMD_ONU_FAST_LEAVE_GET, 0, zeros(4));
        OnuBlock address = zeros(17);
        for (const auto &[index, byte] : {std::pair{0, 10}, {3, 2}, {4, 255}, {5, 255}, {6, 255}, {8, 10}, {11, 1}})
            address = with_byte(address, static_cast<size_t>(index), static_cast<char>(byte));
        address.put(layout::onu_mgmt::mode, 1);
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MGMT_SET, BSP_CMD_ONU_MGMT_GET, 0, address);
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_FEC_GET, BSP_CMD_ONU_FEC_GET, 0, word_block(fec_disabled));
        OnuBlock time = zeros(16);
        time.put(layout::onu_time::interval, 3600);
        add(BSP_MSG_ONU_INFO, BSP_CMD_ONU_TIME_GET, BSP_CMD_ONU_TIME_GET, 0, time);
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_WAN_SET, BSP_CMD_VIEW_ONU_WAN, 1, first_wan(olt, of, 1));
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_WLAN_SET, BSP_CMD_VIEW_ONU_WLAN, 2, first_wlan(olt, of, 2));
        OnuBlock rule = zeros(acl_size);
        rule.put(layout::onu_acl::action, acl_permit);
        rule.put(layout::onu_acl::direction, acl_downstream);
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_ACL_SET, BSP_CMD_VIEW_ONU_ACL, 3, rule);
        add(BSP_MSG_ONU_CFG, BSP_CMD_ONU_DHCP_SET, BSP_CMD_VIEW_ONU_DHCP, 0, first_dhcp(olt, of, 0));
        return all;
    }

    uint32_t set(const Way &way, const OnuBlock &block, uint32_t onu_id = 5)
    {
        bsp_onu_msg record = onu_record_of(way.command, 1, onu_id);
        if (is_numbered(way.kept))
            record.onu_arg24 = way.uni;
        else
            record.onu_uni_port = static_cast<uint8_t>(way.uni);
        block.bytes().copy(reinterpret_cast<char *>(record.onu_data), block.bytes().size());
        Message message = message_of(way.channel, record);
        message.call = catalogue::Call::set;
        return simulator.handle(message).status;
    }

    // Returns the block with one to three other bytes.
    OnuBlock changed(OnuBlock block)
    {
        for (uint32_t count = 1 + random.below(3); count > 0; --count) {
            const uint32_t few = random.below(5);
            const auto byte = static_cast<char>(random.below(3) ? few : random.below(256));
            block = with_byte(block, random.below(static_cast<uint32_t>(block.bytes().size())), byte);
        }
        return block;
    }

    // What the service has stored loads, as a state and as a configuration.
    void expect_loads()
    {
        simulator.keep_time();
        EXPECT_NO_THROW(store.load());
        const std::string text = write_configuration(simulator.settings(), store.rows());
        EXPECT_NO_THROW(read_configuration(text, simulator.settings()));
    }
};

std::string problem_with(const Way &way, const OnuBlock &told, const OnuBlock &before)
{
    return problem_of({1, stranger(1), way.kept, way.uni}, {told.bytes(), before.bytes(), 0});
}

TEST(SettingRules, AcceptWhatCanBeSetAndNothingElse)
{
    RulesFixture fixture;
    for (const Way &way : fixture.ways()) {
        SCOPED_TRACE("command " + std::to_string(way.kept));
        ASSERT_EQ(problem_with(way, way.first, way.first), "");
        uint32_t accepted = 0, refused = 0;
        OnuBlock last = way.first;
        for (int times = 0; times < 600; ++times) {
            OnuBlock block = fixture.changed(last);
            if (way.kept == BSP_CMD_ONU_PORT_CONFIG_SET) block = with_byte(block, 0, 0); // no profile
            const uint32_t status = fixture.set(way, block);
            ASSERT_TRUE(status == BSP_OK || status == PON_ERR_BAD_RECORD) << status;
            ASSERT_EQ(problem_with(way, block, way.first).empty(), status == BSP_OK) << block.bytes();
            ASSERT_EQ(problem_with(way, way.first, block).empty(), status == BSP_OK) << block.bytes();
            ++(status == BSP_OK ? accepted : refused);
            if (status == BSP_OK) last = block;
        }
        EXPECT_GT(accepted, 0u);
        EXPECT_GT(refused, 0u);
    }
    fixture.expect_loads();
}

TEST(SettingRules, AcceptWhatAnyKindOfOnuComesWith)
{
    RulesFixture fixture;
    std::map<std::string_view, uint32_t> stored;
    uint32_t next = 10;
    for (const Arrival &arrival : fixture.port(1).arrivals) {
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, next++, arrival.mac));
        const uint32_t onu_id = fixture.simulator.olt().id_at(1, arrival.mac).value();
        for (const Way &way : fixture.ways(onu_id))
            for (int times = 0; times < 6; ++times)
                stored[fixture.onu(onu_id).device.type->model] +=
                    fixture.set(way, fixture.changed(way.first), onu_id) == BSP_OK;
    }
    for (const DeviceType &kind : device_types())
        EXPECT_GT(stored[kind.model], 100u) << kind.model;
    fixture.expect_loads();
}

TEST(SettingRules, AcceptListsAsTheServiceKeepsThem)
{
    RulesFixture fixture;
    Random &random = fixture.random;
    fixture.send_setting(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_SWITCH_GET, 0, OnuBlock(std::string(1, '\1')));
    uint32_t accepted = 0;
    for (int times = 0; times < 400; ++times) {
        OnuBlock vlans(18);
        vlans.put(layout::onu_mc_vlan_set::operation, random.below(3));
        const uint32_t number = random.below(4);
        vlans.put(layout::onu_mc_vlan_set::number, number);
        for (uint32_t index = 0; index < number; ++index)
            vlans.put(layout::onu_mc_vlan_set::vlan[index], random.below(12));
        accepted += fixture.send_setting(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_VLAN_SET, 1 + random.below(4), vlans) == 0;
        OnuBlock groups(mc_groups_size);
        groups.put(layout::onu_mc_group_set::action, random.below(3));
        groups.put(layout::onu_mc_group_set::control_type, 1);
        groups.put(layout::onu_mc_group_set::number, number);
        for (uint32_t index = 0; index < number; ++index) {
            groups.put(layout::onu_mc_group_set::uni[index], random.below(6));
            groups.put(layout::onu_mc_group_set::vlan[index], random.below(12));
            groups.put(layout::onu_mc_group_set::group[index],
                       Mac{1, 0, 0x5e, 1, 1, static_cast<uint8_t>(random.below(20))});
        }
        accepted += fixture.send_setting(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_GROUP_SET, 0, groups) == 0;
        OnuBlock rules(classification_size);
        namespace at = layout::onu_classification;
        rules.put(at::action, random.below(3));
        rules.put(at::count, number);
        for (uint32_t index = 0; index < number; ++index) {
            rules.put(at::precedence[index], random.below(10));
            rules.put(at::queue[index], random.below(6));
            rules.put(at::mark[index], random.below(9));
            rules.put(at::entries[index], random.below(3));
            rules.put(at::field_a[index], random.below(12));
            rules.put(at::operator_a[index], random.below(9));
        }
        accepted += fixture.send_setting(BSP_MSG_ONU_INFO, BSP_CMD_ONU_CLASSIFICATION_SET, 1, rules) == 0;
        accepted += fixture.send_setting(BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_MONITOR_SET, 0,
                                         OnuBlock(std::string(1, static_cast<char>(random.below(2))))) == 0;
        bsp_onu_msg llids = onu_record_of(BSP_CMD_ONU_MULTI_LLID_SET, 1, 5);
        put(llids, layout::onu_multi_llid::llids, random.below(10));
        accepted += fixture.simulator.handle(message_of(BSP_MSG_ONU_INFO, llids)).status == 0;
        fixture.pass(random.below(300));
        if (times % 20 == 0) fixture.expect_loads();
    }
    EXPECT_GT(accepted, 400u);
}

TEST(SettingRules, RefuseListsThatNoRequestsMake)
{
    const auto problem = [](uint32_t command, uint32_t uni, const OnuBlock &block) {
        return problem_of({1, stranger(1), command, uni}, {block.bytes(), block.bytes(), 0});
    };
    const char *bad = "told has a value that cannot be set";
    const std::vector<uint32_t> vlans[] = {{1, 1}, {4095}};
    EXPECT_EQ(problem(BSP_CMD_ONU_MC_VLAN_GET, 1, block_of(std::vector<uint32_t>{1, 4094})), "");
    for (const std::vector<uint32_t> &list : vlans)
        EXPECT_EQ(problem(BSP_CMD_ONU_MC_VLAN_GET, 1, block_of(list)), bad);
    OnuBlock gap = block_of(std::vector<uint32_t>{0, 7});
    EXPECT_EQ(problem(BSP_CMD_ONU_MC_VLAN_GET, 1, gap), bad);

    const McGroup good{1, 100, {1, 0, 0x5e, 1, 1, 1}};
    const auto groups = [&](const std::vector<McGroup> &list) {
        return problem(BSP_CMD_ONU_MC_GROUP_GET, 0, block_of(list));
    };
    EXPECT_EQ(groups({good}), "");
    EXPECT_EQ(groups({good, good}), bad);
    EXPECT_EQ(groups({{5, 100, good.mac}}), bad);
    EXPECT_EQ(groups({{1, 0, good.mac}}), bad);
    EXPECT_EQ(groups({{1, 100, stranger(1)}}), bad);
    EXPECT_EQ(problem(BSP_CMD_ONU_MC_GROUP_GET, 0, with_byte(block_of(std::vector<McGroup>{}), 0, 1)), bad);
    EXPECT_EQ(problem(BSP_CMD_ONU_MC_GROUP_GET, 0, with_byte(block_of(std::vector<McGroup>{good}), 30, 1)), bad);

    namespace at = layout::onu_classification;
    OnuBlock rules(classification_size);
    rules.put(at::action, 1);
    EXPECT_EQ(problem(BSP_CMD_ONU_CLASSIFICATION_GET, 1, rules), "");
    rules.put(at::count, 1);
    rules.put(at::length[0], 11);
    rules.put(at::entries[0], 1);
    rules.put(at::operator_a[0], 7);
    EXPECT_EQ(problem(BSP_CMD_ONU_CLASSIFICATION_GET, 1, rules), "");
    const auto with = [&](auto where, uint32_t value) {
        OnuBlock other = rules;
        other.put(where, value);
        return problem(BSP_CMD_ONU_CLASSIFICATION_GET, 1, other);
    };
    EXPECT_EQ(with(at::queue[0], 8), bad);
    EXPECT_EQ(with(at::mark[0], 8), bad);
    EXPECT_EQ(with(at::field_a[0], 12), bad);
    EXPECT_EQ(with(at::operator_a[0], 8), bad);
    EXPECT_EQ(with(at::length[0], 12), bad);
    EXPECT_EQ(with(at::action, 2), bad);
    EXPECT_EQ(with(at::queue[1], 1), bad);

    EXPECT_EQ(problem(BSP_CMD_ONU_MULTI_LLID_SET, 0, word_block(8)), "");
    EXPECT_EQ(problem(BSP_CMD_ONU_MULTI_LLID_SET, 0, word_block(0)), bad);
    EXPECT_EQ(problem(BSP_CMD_ONU_MULTI_LLID_SET, 0, word_block(9)), bad);
    EXPECT_EQ(problem(BSP_CMD_ONU_PORT_CONFIG_SET, 1, zeros(port_config_size)), "");
    EXPECT_EQ(problem(BSP_CMD_ONU_PORT_CONFIG_SET, 1, with_byte(zeros(port_config_size), 0, 1)), bad);
    EXPECT_EQ(problem(BSP_CMD_ONU_CATV_SET, 0, OnuBlock(std::string(8, '\0'))), "");
    EXPECT_EQ(problem(BSP_CMD_ONU_CATV_SET, 0, OnuBlock(std::string(8, '\x7f'))), bad);
}

TEST(SettingRules, RefuseImagesThatNoOnuHas)
{
    const auto problem = [](const Banks &banks) {
        const std::string block = to_block(banks);
        return problem_of({1, stranger(1), BSP_CMD_ONU_BANKS_GET, 0}, {block, block, 0});
    };
    Banks banks{{Banks::Bank{{'1', '.', '0'}, 1, 100, 100, 7}, {}}, 0, 0, Banks::Push::none, 0};
    EXPECT_EQ(problem(banks), "");
    const auto with = [&](auto change) {
        Banks other = banks;
        change(other);
        return problem(other);
    };
    EXPECT_NE(with([](Banks &other) { other.banks[0].version[1] = '\xff'; }), "");
    EXPECT_NE(with([](Banks &other) { other.banks[0].version[1] = ' '; }), "");
    EXPECT_NE(with([](Banks &other) { other.banks[0].version[4] = '1'; }), "");
    EXPECT_NE(with([](Banks &other) { other.banks[0].version.fill('1'); }), "");
    EXPECT_NE(with([](Banks &other) { other.banks[0].received = 101; }), "");
    EXPECT_NE(with([](Banks &other) { other.active = 2; }), "");
}

TEST(SettingRules, RefuseAUniProfileThatCannotBeSet)
{
    RulesFixture fixture;
    const std::string good = port_config_of(fixture.simulator.olt(), fixture.onu(), 1).bytes().substr(1);
    const BlockKey key{BSP_MSG_PON, BSP_CMD_UNI_PROFILE_SET, 0, 1};
    EXPECT_EQ(problem_of(1, key, Block{good}), "");
    EXPECT_NE(problem_of(1, key, Block{std::string(good.size(), '\xff')}), "");
}

} // namespace
} // namespace ponsim
