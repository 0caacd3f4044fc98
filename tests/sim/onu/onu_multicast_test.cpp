// These tests check multicast at ONUs: settings, the groups that their UNI ports join, and the views of them.
#include "model/plant/onu_multicast.h"

#include <algorithm>
#include <cstring>

#include "model/lifecycle/registration.h"
#include "model/olt/remote.h"
#include "rows.h"
#include "support.h"
#include "views/onu_multicast.h"

namespace ponsim
{
namespace
{

using catalogue::Call;

constexpr size_t small_result = 10240; // the longest result on the channels of remote ONUs
constexpr uint32_t onu_id = 5;
constexpr uint8_t remove_them = 0, add_them = 1, clear_all = 2;

// The first model has every ability, the second has no controllable multicast and no fast leave, and the third has no
// multicast at all.
constexpr std::string_view able = "S040", snooper = "S100", unable = "E020";

// On this OLT an ONU of the given model is online. If the model can do multicast, the ONU's UNI ports have viewers.
struct House : ServiceFixture {
    Mac mac{};

    explicit House(std::string_view model = able, const std::string &file = {})
        : ServiceFixture({.seed = 1, .ports = 1, .arrivals = 64, .silent = 0}, file)
    {
        for (const Arrival &arrival : port(1).arrivals)
            if (device_of(1, arrival.mac).type->model == model && (model == unable || watches(arrival.mac)))
                mac = arrival.mac;
        EXPECT_FALSE(is_zero(mac)) << "no such ONU has arrived";
        if (!port(1).bindings[onu_id]) {
            EXPECT_EQ(send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, mac)), BSP_OK);
        }
    }

    // Returns whether the ONU has viewers behind a port with multicast VLANs and a link.
    static bool watches(const Mac &mac)
    {
        const Device device = device_of(1, mac);
        const auto configs = default_configs(1, mac, device);
        const auto viewers = viewers_of(1, mac, device);
        for (size_t index = 0; index < viewers.size(); ++index)
            if (link_of(device.unis[index], configs[index]) && !viewers[index].vlans.empty() &&
                viewers[index].watched.size() > 1)
                return true;
        return false;
    }

    Reply call(Call how, uint32_t command, uint8_t uni = 0, std::string_view data = {})
    {
        bsp_onu_msg record = onu_record_of(command, 1, onu_id);
        record.onu_uni_port = uni;
        data.copy(reinterpret_cast<char *>(record.onu_data), data.size());
        Message message = message_of(BSP_MSG_ONU_CFG, record);
        message.call = how;
        return simulator.handle(message);
    }
    uint32_t set(uint32_t command, const OnuBlock &block, uint8_t uni = 0)
    {
        return call(Call::set, command, uni, block.bytes()).status;
    }
    OnuBlock get(uint32_t command, size_t size, uint8_t uni = 0)
    {
        const Reply reply = call(Call::get, command, uni);
        EXPECT_EQ(reply.status, BSP_OK);
        return OnuBlock(reply.answer.value_or("").substr(offsetof(bsp_onu_msg, onu_data), size));
    }
    uint32_t status(uint32_t command, uint8_t uni = 0) { return call(Call::get, command, uni).status; }
    rapidjson::Document rows(uint32_t command, uint8_t uni = 0)
    {
        return parse(call(Call::get, command, uni).result.value_or("no result"));
    }

    void wait() { simulator.advance(simulator.olt().now() + oam_delay); }
    void power_off() { simulator.change(set_power(simulator.olt(), 1, mac, false).change); }
};

template <class Number>
OnuBlock number(Number value)
{
    OnuBlock block(sizeof value);
    block.put(layout::At<Number>{352}, value);
    return block;
}

OnuBlock fast_leave(uint32_t state)
{
    return number<uint32_t>(state);
}

OnuBlock mode(uint8_t value)
{
    return number<uint8_t>(value);
}

OnuBlock maximum(uint16_t value)
{
    return number<uint16_t>(value);
}

OnuBlock tags(uint8_t mode, uint8_t number, const std::vector<Vlan> &pairs = {})
{
    OnuBlock block(34);
    block.put(layout::At<uint8_t>{352}, mode);
    block.put(layout::At<uint8_t>{353}, number);
    for (uint32_t index = 0; index < pairs.size(); ++index) {
        block.put(layout::At<uint16_t>{354 + 4 * index}, static_cast<uint16_t>(pairs[index].network));
        block.put(layout::At<uint16_t>{356 + 4 * index}, static_cast<uint16_t>(pairs[index].user));
    }
    return block;
}

OnuBlock vlans(uint8_t operation, const std::vector<uint16_t> &list)
{
    OnuBlock block(18);
    block.put(layout::At<uint8_t>{352}, operation);
    block.put(layout::At<uint8_t>{353}, static_cast<uint8_t>(list.size()));
    for (uint32_t index = 0; index < list.size() && index < 8; ++index)
        block.put(layout::At<uint16_t>{354 + 2 * index}, list[index]);
    return block;
}

OnuBlock groups(uint8_t action, const std::vector<McGroup> &list)
{
    OnuBlock block(1284);
    block.put(layout::At<uint8_t>{352}, action);
    block.put(layout::At<uint8_t>{353}, 1);
    block.put(layout::At<uint8_t>{354}, static_cast<uint8_t>(list.size()));
    for (uint32_t index = 0; index < list.size() && index < 128; ++index) {
        block.put(layout::At<uint16_t>{356 + 10 * index}, static_cast<uint16_t>(list[index].uni));
        block.put(layout::At<uint16_t>{358 + 10 * index}, static_cast<uint16_t>(list[index].vlan));
        block.put(layout::At<Mac>{360 + 10 * index}, list[index].mac);
    }
    return block;
}

McGroup group(uint8_t last, uint32_t uni = 1)
{
    return {uni, 100, {0x01, 0x00, 0x5e, 0x01, 0x02, last}};
}

std::vector<McGroup> entries(House &house)
{
    const OnuBlock block = house.get(BSP_CMD_ONU_MC_GROUP_GET, 1284);
    std::vector<McGroup> list;
    for (uint32_t index = 0; index < block.get(layout::At<uint8_t>{354}); ++index)
        list.push_back({block.get(layout::At<uint16_t>{356 + 10 * index}),
                        block.get(layout::At<uint16_t>{358 + 10 * index}),
                        block.get(layout::At<Mac>{360 + 10 * index})});
    return list;
}

// In this fixture the ONU is in controllable multicast.
struct ControlledHouse : House {
    ControlledHouse()
    {
        EXPECT_EQ(set(BSP_CMD_ONU_MC_SWITCH_SET, mode(1)), BSP_OK);
        wait();
    }
    uint32_t set_groups(uint8_t action, const std::vector<McGroup> &list)
    {
        const uint32_t status = set(BSP_CMD_ONU_MC_GROUP_SET, groups(action, list));
        wait();
        return status;
    }
};

OnuBlock abilities(const std::vector<uint32_t> &words, uint32_t at)
{
    OnuBlock block(at - 352 + 28);
    block.put(layout::At<uint32_t>{at}, words.size());
    for (uint32_t index = 0; index < words.size(); ++index)
        block.put(layout::At<uint32_t>{at + 4 + 4 * index}, words[index]);
    return block;
}

// A Setting of an ONU that can do everything has a value other than the usual one, and a value that is wrong.
struct Setting {
    uint32_t set;
    uint32_t remote;
    uint32_t local;
    uint8_t uni;
    OnuBlock value;
    OnuBlock wrong;
};

const Setting settings[] = {
    {BSP_CMD_ONU_MC_SWITCH_SET, BSP_CMD_ONU_MC_SWITCH_GET, BSP_CMD_ONU_MC_SWITCH_LOCAL_GET, 0, mode(1), mode(2)},
    {BSP_CMD_ONU_MC_GROUP_MAX_SET, BSP_CMD_ONU_MC_GROUP_MAX_GET, BSP_CMD_ONU_MC_GROUP_MAX_LOCAL_GET, 2, maximum(255),
     maximum(256)},
    {BSP_CMD_ONU_MC_VLAN_MODE_SET, BSP_CMD_ONU_MC_VLAN_MODE_GET, BSP_CMD_ONU_MC_VLAN_MODE_LOCAL_GET, 2,
     tags(2, 2, {{.user = 10, .network = 4094}, {.user = 10, .network = 1}}), tags(3, 0)},
};

TEST(OnuMulticastSettings, ReachTheOnuAfterTheDelayAndTheOltAtOnce)
{
    for (const Setting &setting : settings) {
        House house;
        const size_t size = setting.value.bytes().size();
        const OnuBlock usual = house.get(setting.remote, size, setting.uni);
        EXPECT_NE(usual, setting.value);
        EXPECT_EQ(house.set(setting.set, setting.value, setting.uni), BSP_OK);
        EXPECT_EQ(house.get(setting.remote, size, setting.uni), usual);
        EXPECT_EQ(house.get(setting.local, size, setting.uni), setting.value);
        house.wait();
        EXPECT_EQ(house.get(setting.remote, size, setting.uni), setting.value) << setting.remote;
    }
}

TEST(OnuMulticastSettings, OfOneUniPortAreNoOthers)
{
    House house;
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_MAX_SET, maximum(7), 2), BSP_OK);
    EXPECT_EQ(house.get(BSP_CMD_ONU_MC_GROUP_MAX_LOCAL_GET, 2, 1), maximum(32));
}

TEST(OnuMulticastSettings, WrongValuesAreRefused)
{
    for (const Setting &setting : settings) {
        House house;
        EXPECT_EQ(house.set(setting.set, setting.wrong, setting.uni), PON_ERR_BAD_RECORD) << setting.set;
    }
    House house;
    EXPECT_EQ(house.set(BSP_CMD_ONU_FAST_LEAVE_SET, fast_leave(2)), PON_ERR_BAD_RECORD);
}

TEST(OnuMulticastSettings, OfAnOfflineOnuTheOltStillHas)
{
    for (const Setting &setting : settings) {
        House house;
        house.set(setting.set, setting.value, setting.uni);
        house.power_off();
        EXPECT_EQ(house.status(setting.remote, setting.uni), PON_ERR_OFFLINE);
        EXPECT_EQ(house.set(setting.set, setting.value, setting.uni), PON_ERR_OFFLINE);
        EXPECT_EQ(house.get(setting.local, setting.value.bytes().size(), setting.uni), setting.value);
    }
}

TEST(OnuMulticastSettings, SurviveReopeningTheStore)
{
    const Folder folder;
    const std::string file = folder.file("state");
    {
        House house(able, file);
        for (const Setting &setting : settings)
            EXPECT_EQ(house.set(setting.set, setting.value, setting.uni), BSP_OK);
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_SET, groups(add_them, {group(9)})), BSP_OK);
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(clear_all, {}), 1), BSP_OK);
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(add_them, {77}), 1), BSP_OK);
    }
    House house(able, file);
    house.wait();
    for (const Setting &setting : settings)
        EXPECT_EQ(house.get(setting.remote, setting.value.bytes().size(), setting.uni), setting.value);
    EXPECT_EQ(house.get(BSP_CMD_ONU_MC_VLAN_GET, 18, 1), vlans(3, {77}));
    EXPECT_EQ(entries(house), std::vector<McGroup>{group(9)});
}

TEST(OnuMulticastSettings, OfAPortThatTheOnuHasNotAreRefused)
{
    House house;
    for (uint8_t uni : {0, 5}) {
        for (uint32_t command :
             {BSP_CMD_ONU_MC_GROUP_MAX_GET, BSP_CMD_ONU_MC_GROUP_MAX_LOCAL_GET, BSP_CMD_ONU_MC_VLAN_MODE_GET,
              BSP_CMD_ONU_MC_VLAN_MODE_LOCAL_GET, BSP_CMD_ONU_MC_VLAN_GET, BSP_CMD_ONU_MC_VLAN_LOCAL_GET,
              BSP_CMD_VIEW_ONU_MC_TRANSLATION})
            EXPECT_EQ(house.status(command, uni), PON_ERR_NO_UNI) << command;
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_MAX_SET, maximum(1), uni), PON_ERR_NO_UNI);
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_MODE_SET, tags(1, 0), uni), PON_ERR_NO_UNI);
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(add_them, {1}), uni), PON_ERR_NO_UNI);
    }
}

TEST(OnuMulticastSettings, OfAnOnuWithoutMulticastCannotBeMade)
{
    House house(unable);
    EXPECT_EQ(house.set(BSP_CMD_ONU_FAST_LEAVE_SET, fast_leave(1)), PON_ERR_NOT_ABLE);
    for (uint8_t value : {0, 1})
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_SWITCH_SET, mode(value)), PON_ERR_NOT_ABLE);
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_MAX_SET, maximum(1), 1), PON_ERR_NOT_ABLE);
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_MODE_SET, tags(1, 0), 1), PON_ERR_NOT_ABLE);
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(add_them, {1}), 1), PON_ERR_NOT_ABLE);
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_SET, groups(clear_all, {})), PON_ERR_NOT_ABLE);
}

TEST(OnuMulticastSettings, OfAnOnuWithoutMulticastAreZero)
{
    House house(unable);
    EXPECT_EQ(house.get(BSP_CMD_ONU_MC_GROUP_MAX_GET, 2, 1), maximum(0));
    EXPECT_EQ(house.get(BSP_CMD_ONU_MC_VLAN_LOCAL_GET, 16, 1), OnuBlock(16));
    EXPECT_EQ(house.get(BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET, 28), OnuBlock(28));
}

TEST(OnuMulticastSettings, AnOnuThatOnlySnoopsIsNotToldToControl)
{
    House house(snooper);
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_SWITCH_SET, mode(1)), PON_ERR_NOT_ABLE);
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_SWITCH_SET, mode(0)), BSP_OK);
}

TEST(OnuFastLeave, AbilitiesAreThoseOfTheKind)
{
    EXPECT_EQ(House(able).get(BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET, 28), abilities({0x00, 0x01, 0x10, 0x11}, 352));
    EXPECT_EQ(House(snooper).get(BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET, 28), abilities({0x00}, 352));
}

TEST(OnuFastLeave, TheOltHasStateAndAbilities)
{
    House house;
    EXPECT_EQ(house.set(BSP_CMD_ONU_FAST_LEAVE_SET, fast_leave(1)), BSP_OK);
    OnuBlock wanted = abilities({0x00, 0x01, 0x10, 0x11}, 356);
    wanted.put(layout::At<uint32_t>{352}, 1);
    EXPECT_EQ(house.get(BSP_CMD_ONU_FAST_LEAVE_GET, 4), fast_leave(0));
    house.wait();
    EXPECT_EQ(house.get(BSP_CMD_ONU_FAST_LEAVE_GET, 4), fast_leave(1));
    house.power_off();
    EXPECT_EQ(house.get(BSP_CMD_ONU_FAST_LEAVE_LOCAL_GET, 32), wanted);
    EXPECT_EQ(house.status(BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET), PON_ERR_OFFLINE);
}

TEST(OnuFastLeave, NeedsAnOnuThatKnowsItToBeOn)
{
    House house(snooper);
    EXPECT_EQ(house.set(BSP_CMD_ONU_FAST_LEAVE_SET, fast_leave(1)), PON_ERR_NOT_ABLE);
    EXPECT_EQ(house.set(BSP_CMD_ONU_FAST_LEAVE_SET, fast_leave(0)), BSP_OK);
}

TEST(OnuMcTags, PairsGoWithTranslationOnlyAndAreVlansEachOnce)
{
    House house;
    const Vlan good{.user = 10, .network = 20};
    for (const OnuBlock &wrong : {tags(2, 0), tags(0, 1, {good}), tags(1, 1, {good}), tags(1, 0, {good}),
                                  tags(2, 1, {good, good}), tags(2, 2, {good, good}), tags(2, 2, {good}),
                                  tags(2, 1, {{.user = 0, .network = 20}}), tags(2, 1, {{.user = 10, .network = 4095}}),
                                  tags(2, 1, {{.user = 4095, .network = 1}}), tags(2, 9, std::vector<Vlan>(8, good))})
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_MODE_SET, wrong, 1), PON_ERR_BAD_RECORD);
    for (const OnuBlock &right : {tags(0, 0), tags(1, 0), tags(2, 1, {good})})
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_MODE_SET, right, 1), BSP_OK);
}

// In this fixture UNI port 1 has no multicast VLANs.
struct VlanHouse : House {
    VlanHouse() { set_vlans(clear_all, {}); }
    uint32_t set_vlans(uint8_t operation, const std::vector<uint16_t> &list)
    {
        const uint32_t status = set(BSP_CMD_ONU_MC_VLAN_SET, vlans(operation, list), 1);
        wait();
        return status;
    }
    OnuBlock now() { return get(BSP_CMD_ONU_MC_VLAN_GET, 18, 1); }
};

TEST(OnuMcVlans, AreAddedDeletedAndCleared)
{
    VlanHouse house;
    EXPECT_EQ(house.set_vlans(add_them, {300, 1, 4094}), BSP_OK);
    EXPECT_EQ(house.now(), vlans(3, {300, 1, 4094}));
    EXPECT_EQ(house.set_vlans(add_them, {2, 1}), BSP_OK);
    EXPECT_EQ(house.set_vlans(remove_them, {1, 300, 55}), BSP_OK);
    EXPECT_EQ(house.now(), vlans(3, {4094, 2}));
    EXPECT_EQ(house.set_vlans(clear_all, {}), BSP_OK);
    EXPECT_EQ(house.now(), vlans(3, {}));
}

TEST(OnuMcVlans, OfTheOltAreTheBareListAndThereAtOnce)
{
    VlanHouse house;
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(add_them, {300, 1}), 1), BSP_OK);
    EXPECT_EQ(house.now(), vlans(3, {}));
    EXPECT_EQ(house.get(BSP_CMD_ONU_MC_VLAN_LOCAL_GET, 16, 1).bytes(), vlans(3, {300, 1}).bytes().substr(2));
}

TEST(OnuMcVlans, ChangesThatFollowCloselyAddUp)
{
    VlanHouse house;
    for (uint16_t vlan : {5, 6})
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(add_them, {vlan}), 1), BSP_OK);
    house.wait();
    EXPECT_EQ(house.now(), vlans(3, {5, 6}));
}

TEST(OnuMcVlans, AreEightAtMost)
{
    VlanHouse house;
    EXPECT_EQ(house.set_vlans(add_them, {1, 2, 3, 4, 5, 6, 7}), BSP_OK);
    EXPECT_EQ(house.set_vlans(add_them, {8, 9}), PON_ERR_TABLE_FULL);
    EXPECT_EQ(house.now(), vlans(3, {1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(house.set_vlans(add_them, {7, 8}), BSP_OK);
}

TEST(OnuMcVlans, WrongChangesAreRefused)
{
    VlanHouse house;
    for (const OnuBlock &wrong :
         {vlans(3, {1}), vlans(add_them, {}), vlans(remove_them, {}), vlans(clear_all, {1}), vlans(add_them, {0}),
          vlans(add_them, {4095}), vlans(add_them, {5, 5}), vlans(add_them, std::vector<uint16_t>(9, 1))})
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, wrong, 1), PON_ERR_BAD_RECORD);
}

TEST(OnuMcGroups, OfSnoopingLieInTheVlansOfPortsWithALink)
{
    House house;
    const Device device = device_of(1, house.mac);
    const auto configs = default_configs(1, house.mac, device);
    const std::vector<McGroup> joined = entries(house);
    ASSERT_GT(joined.size(), 1u);
    for (const McGroup &group : joined) {
        EXPECT_TRUE(is_group(group.mac));
        EXPECT_TRUE(link_of(device.unis[group.uni - 1], configs[group.uni - 1]));
        const OnuBlock list = house.get(BSP_CMD_ONU_MC_VLAN_GET, 18, static_cast<uint8_t>(group.uni));
        EXPECT_TRUE(group.vlan == list.get(layout::At<uint16_t>{354}) ||
                    group.vlan == list.get(layout::At<uint16_t>{356}));
        EXPECT_EQ(std::ranges::count(joined, group), 1);
    }
    EXPECT_EQ(house.get(BSP_CMD_ONU_MC_GROUP_GET, 1284), groups(3, joined));
}

TEST(OnuMcGroups, OfSnoopingFollowTheVlans)
{
    House house;
    const std::vector<McGroup> before = entries(house);
    const auto uni = static_cast<uint8_t>(before.front().uni);
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(clear_all, {}), uni), BSP_OK);
    EXPECT_EQ(entries(house), before) << "the setting was sent and has not arrived";
    house.wait();
    EXPECT_EQ(std::ranges::count(entries(house), uni, &McGroup::uni), 0);
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(add_them, {77}), uni), BSP_OK);
    house.wait();
    const std::vector<McGroup> after = entries(house);
    EXPECT_EQ(std::ranges::count(after, uni, &McGroup::uni), std::ranges::count(before, uni, &McGroup::uni));
    EXPECT_EQ(std::ranges::count(after, 77u, &McGroup::vlan), std::ranges::count(after, uni, &McGroup::uni));
}

TEST(OnuMcGroups, OfSnoopingAreNoMoreThanThePortsMaximum)
{
    House house;
    for (uint8_t uni = 1; uni <= 4; ++uni)
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_MAX_SET, maximum(1), uni), BSP_OK);
    ASSERT_GT(entries(house).size(), 1u);
    house.wait();
    for (uint32_t uni = 1; uni <= 4; ++uni)
        EXPECT_LE(std::ranges::count(entries(house), uni, &McGroup::uni), 1);
    EXPECT_FALSE(entries(house).empty());
}

TEST(OnuMcGroups, OfControlAreAddedDeletedAndCleared)
{
    ControlledHouse house;
    EXPECT_EQ(entries(house), std::vector<McGroup>{});
    const McGroup ipv6{4, 4094, {0x33, 0x33, 0, 0, 0, 1}};
    EXPECT_EQ(house.set_groups(add_them, {group(3), ipv6, group(1)}), BSP_OK);
    EXPECT_EQ(house.set_groups(add_them, {group(1)}), BSP_OK);
    EXPECT_EQ(entries(house), (std::vector{group(3), ipv6, group(1)}));
    EXPECT_EQ(house.set_groups(remove_them, {group(3), group(99)}), BSP_OK);
    EXPECT_EQ(house.get(BSP_CMD_ONU_MC_GROUP_GET, 1284), groups(3, {ipv6, group(1)}));
    EXPECT_EQ(house.set_groups(clear_all, {}), BSP_OK);
    EXPECT_EQ(entries(house), std::vector<McGroup>{});
}

TEST(OnuMcGroups, OfControlAre128AtMost)
{
    ControlledHouse house;
    EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_MAX_SET, maximum(255), 1), BSP_OK);
    std::vector<McGroup> all;
    for (uint8_t last = 0; last < 128; ++last)
        all.push_back(group(last));
    EXPECT_EQ(house.set_groups(add_them, all), BSP_OK);
    EXPECT_EQ(house.set_groups(add_them, {group(200)}), PON_ERR_TABLE_FULL);
    EXPECT_EQ(entries(house), all);
}

TEST(OnuMcGroups, OfControlBeyondThePortsMaximumStayOutUntilThereIsRoom)
{
    ControlledHouse house;
    EXPECT_EQ(house.set_groups(add_them, {group(1), group(2), group(3, 2)}), BSP_OK);
    house.set(BSP_CMD_ONU_MC_GROUP_MAX_SET, maximum(1), 1);
    house.wait();
    EXPECT_EQ(entries(house), (std::vector{group(1), group(3, 2)}));
    house.set(BSP_CMD_ONU_MC_GROUP_MAX_SET, maximum(2), 1);
    house.wait();
    EXPECT_EQ(entries(house), (std::vector{group(1), group(2), group(3, 2)}));
}

TEST(OnuMcGroups, OfControlAreKeptWhileTheOnuSnoops)
{
    ControlledHouse house;
    EXPECT_EQ(house.set_groups(add_them, {group(1)}), BSP_OK);
    house.set(BSP_CMD_ONU_MC_SWITCH_SET, mode(0));
    house.wait();
    EXPECT_NE(entries(house), std::vector{group(1)});
    EXPECT_EQ(house.set_groups(clear_all, {}), PON_ERR_SNOOPING);
    house.set(BSP_CMD_ONU_MC_SWITCH_SET, mode(1));
    house.wait();
    EXPECT_EQ(entries(house), std::vector{group(1)});
}

TEST(OnuMcGroups, WrongChangesAreRefused)
{
    ControlledHouse house;
    const McGroup station{1, 100, {0x00, 0x1b, 0x21, 0, 0, 1}};
    const McGroup no_vlan{1, 0, group(1).mac};
    const McGroup high_vlan{1, 4095, group(1).mac};
    OnuBlock other_type = groups(add_them, {group(1)});
    other_type.put(layout::At<uint8_t>{353}, 0);
    for (const OnuBlock &wrong :
         {groups(3, {group(1)}), groups(add_them, {}), groups(clear_all, {group(1)}), groups(add_them, {station}),
          groups(add_them, {no_vlan}), groups(add_them, {high_vlan}), groups(add_them, {group(1), group(1)}),
          groups(add_them, std::vector<McGroup>(129, group(1))), other_type})
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_SET, wrong), PON_ERR_BAD_RECORD);
    for (uint32_t uni : {0u, 5u})
        EXPECT_EQ(house.set(BSP_CMD_ONU_MC_GROUP_SET, groups(add_them, {group(1, uni)})), PON_ERR_NO_UNI);
}

TEST(OnuMcGroups, OfAnOfflineOnuAreUnknown)
{
    ControlledHouse house;
    house.power_off();
    EXPECT_EQ(house.status(BSP_CMD_ONU_MC_GROUP_GET), PON_ERR_OFFLINE);
    EXPECT_EQ(house.set_groups(clear_all, {}), PON_ERR_OFFLINE);
}

TEST(OnuMcViews, ShowWhatTheOltToldBeforeTheOnuHasIt)
{
    House house;
    house.set(BSP_CMD_ONU_MC_SWITCH_SET, mode(1));
    house.set(BSP_CMD_ONU_FAST_LEAVE_SET, fast_leave(1));
    const rapidjson::Document rows = house.rows(BSP_CMD_VIEW_ONU_MC_CONFIG);
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_EQ(rows[0]["onu_id"].GetUint(), onu_id);
    EXPECT_STREQ(rows[0]["mode"].GetString(), "control");
    EXPECT_TRUE(rows[0]["fast_leave"].GetBool());
    EXPECT_EQ(rows[0]["groups"].GetUint(), entries(house).size()) << "of the ONU, which snoops yet";
}

TEST(OnuMcViews, AnOnuWithoutMulticastHasNoMode)
{
    EXPECT_TRUE(House(unable).rows(BSP_CMD_VIEW_ONU_MC_CONFIG)[0]["mode"].IsNull());
    EXPECT_STREQ(House(snooper).rows(BSP_CMD_VIEW_ONU_MC_CONFIG)[0]["mode"].GetString(), "snooping");
}

TEST(OnuMcViews, UniPortsAreAsTheirBlocksSay)
{
    House house;
    house.set(BSP_CMD_ONU_MC_GROUP_MAX_SET, maximum(9), 3);
    house.set(BSP_CMD_ONU_MC_VLAN_MODE_SET, tags(1, 0), 3);
    house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(clear_all, {}), 3);
    house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(clear_all, {}), 4);
    house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(add_them, {5, 4}), 3);
    const rapidjson::Document rows = house.rows(BSP_CMD_VIEW_ONU_UNI_MC_CONFIG);
    ASSERT_EQ(rows.Size(), 4u);
    EXPECT_EQ(rows[2]["uni"].GetUint(), 3u);
    EXPECT_EQ(rows[2]["group_max"].GetUint(), 9u);
    EXPECT_STREQ(rows[2]["tags"].GetString(), "strip");
    EXPECT_STREQ(rows[2]["vlans"].GetString(), "5,4");
    EXPECT_TRUE(rows[3]["vlans"].IsNull());
    for (const auto &row : rows.GetArray())
        EXPECT_EQ(row["groups"].GetUint(),
                  static_cast<uint64_t>(std::ranges::count(entries(house), row["uni"].GetUint(), &McGroup::uni)));
}

TEST(OnuMcViews, TranslationsAreThoseOfOnePort)
{
    House house;
    EXPECT_EQ(house.rows(BSP_CMD_VIEW_ONU_MC_TRANSLATION, 2).Size(), 0u);
    house.set(BSP_CMD_ONU_MC_VLAN_MODE_SET, tags(2, 1, {{.user = 10, .network = 20}}), 2);
    const rapidjson::Document rows = house.rows(BSP_CMD_VIEW_ONU_MC_TRANSLATION, 2);
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_EQ(rows[0]["mc_vlan"].GetUint(), 20u);
    EXPECT_EQ(rows[0]["user_vlan"].GetUint(), 10u);
    EXPECT_EQ(house.rows(BSP_CMD_VIEW_ONU_MC_TRANSLATION, 1).Size(), 0u);
}

TEST(OnuMcViews, VlansHaveARowEach)
{
    House house;
    for (uint8_t uni = 1; uni <= 4; ++uni)
        house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(clear_all, {}), uni);
    house.set(BSP_CMD_ONU_MC_VLAN_SET, vlans(add_them, {9, 8}), 2);
    const rapidjson::Document rows = house.rows(BSP_CMD_VIEW_ONU_MC_VLAN);
    ASSERT_EQ(rows.Size(), 2u);
    EXPECT_EQ(rows[0]["uni"].GetUint(), 2u);
    EXPECT_EQ(rows[0]["mc_vlan"].GetUint(), 9u);
    EXPECT_EQ(rows[1]["mc_vlan"].GetUint(), 8u);
}

TEST(OnuMcViews, AnOfflineOnuIsShownWithoutItsGroups)
{
    House house;
    house.power_off();
    EXPECT_TRUE(house.rows(BSP_CMD_VIEW_ONU_MC_CONFIG)[0]["groups"].IsNull());
    EXPECT_TRUE(house.rows(BSP_CMD_VIEW_ONU_UNI_MC_CONFIG)[0]["groups"].IsNull());
    EXPECT_EQ(house.status(BSP_CMD_VIEW_ONU_MC_TRANSLATION, 1), BSP_OK);
    EXPECT_EQ(house.status(BSP_CMD_VIEW_ONU_MC_VLAN), BSP_OK);
}

TEST(OnuMcViews, OfNoOnuAreAStatusWithoutATable)
{
    House house;
    for (uint32_t command : {BSP_CMD_VIEW_ONU_MC_CONFIG, BSP_CMD_VIEW_ONU_UNI_MC_CONFIG,
                             BSP_CMD_VIEW_ONU_MC_TRANSLATION, BSP_CMD_VIEW_ONU_MC_VLAN}) {
        const bsp_onu_msg record = onu_record_of(command, 1, onu_id + 1);
        const Reply reply = house.simulator.handle(message_of(BSP_MSG_ONU_CFG, record));
        EXPECT_EQ(reply.status, PON_ERR_NOT_BOUND);
        EXPECT_EQ(reply.result, std::nullopt);
    }
}

TEST(OnuMcViews, StayWithin10240)
{
    const UniMulticast longest{max_uni_mc_groups, McTags::translate,
                               std::vector<Vlan>(max_mc_translations, Vlan{4093, 4094}),
                               std::vector<uint32_t>(max_mc_vlans, 4094), max_uni_mc_groups};
    DeviceType nothing = *device_of(1, stranger(1)).type;
    nothing.igmp_snooping = true;
    nothing.multicast_control = nothing.fast_leave = false; // these give the longer words
    const OnuMulticast onu{
        max_ports, onus_per_port - 1, &nothing, false, false, std::vector<UniMulticast>(max_unis, longest)};
    EXPECT_LE(mc_config_table(onu).size(), small_result);
    EXPECT_LE(uni_mc_config_table(onu).size(), small_result);
    EXPECT_LE(mc_translation_table(onu, max_unis).size(), small_result);
    EXPECT_LE(mc_vlan_table(onu).size(), small_result);
}

} // namespace
} // namespace ponsim
