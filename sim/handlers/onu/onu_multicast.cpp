// These commands concern multicast at ONUs and their UNI ports.
#include <algorithm>
#include <cstddef>

#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/olt/uni_config.h"
#include "model/onu/multicast_settings.h"
#include "model/plant/onu_multicast.h"
#include "views/onu_multicast.h"

namespace ponsim
{
namespace
{

uint32_t able(const RemoteOnu &onu)
{
    return knows_multicast(*onu.device.type) ? BSP_OK : PON_ERR_NOT_ABLE;
}

// Changes a list. Returns BSP_OK unless the list would be longer than `most`.
template <class Value>
uint32_t change_list(std::vector<Value> &values, uint8_t operation, const std::vector<Value> &changes, size_t most)
{
    if (operation == mc_clear) values.clear();
    for (const Value &value : changes) {
        if (operation == mc_remove)
            std::erase(values, value);
        else if (!has(values, value))
            values.push_back(value);
    }
    return values.size() <= most ? BSP_OK : PON_ERR_TABLE_FULL;
}

// Returns whether the operation is possible with so many changes of a list.
bool fits(uint8_t operation, uint32_t number, uint32_t most)
{
    return operation == mc_clear ? number == 0 : operation < mc_clear && number >= 1 && number <= most;
}

// The following handlers are those of fast leave.

template <class Abilities>
void put_abilities(OnuBlock &block, layout::At<uint32_t> number, Abilities ability, const DeviceType &type)
{
    std::vector<uint32_t> abilities;
    for (const auto &[known, mode] : {std::pair{type.igmp_snooping, 0x00u}, {type.multicast_control, 0x10u}}) {
        if (known) abilities.push_back(mode);
        if (known && type.fast_leave) abilities.push_back(mode + 1);
    }
    block.put(number, abilities.size());
    for (uint32_t index = 0; index < abilities.size(); ++index)
        block.put(ability[index], abilities[index]);
}

OnuBlock fast_leave_off(const Olt &, const RemoteOnu &, uint32_t)
{
    return OnuBlock(fast_leave_size);
}

uint32_t check_fast_leave(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    if (!is_good_fast_leave(block)) return PON_ERR_BAD_RECORD;
    const bool on = block.get(layout::onu_fast_leave_set::state) == 1;
    return !on || onu.device.type->fast_leave ? BSP_OK : PON_ERR_NOT_ABLE;
}

constexpr BlockSetting fast_leave{BSP_CMD_ONU_FAST_LEAVE_GET, false, fast_leave_size, fast_leave_off, check_fast_leave};

uint32_t fast_leave_state(const Olt &olt, const RemoteOnu &onu, Side side)
{
    return setting_of(olt, onu, 0, side, fast_leave).get(layout::onu_fast_leave::state);
}

Outcome get_fast_leave_ability(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    namespace fields = layout::onu_fast_leave_ability;
    OnuBlock block(28);
    put_abilities(block, fields::number, fields::ability, *found.onu.device.type);
    return answer_with(request, block);
}

Outcome get_fast_leave_local(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    namespace fields = layout::onu_fast_leave_local;
    OnuBlock block(32);
    block.put(fields::state, fast_leave_state(olt, found.onu, Side::local));
    put_abilities(block, fields::number, fields::ability, *found.onu.device.type);
    return answer_with(request, block);
}

// The following handlers are those of the mode.

OnuBlock snooping(const Olt &, const RemoteOnu &, uint32_t)
{
    return OnuBlock(mc_mode_size);
}

uint32_t check_mode(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    if (!is_good_mc_mode(block)) return PON_ERR_BAD_RECORD;
    const DeviceType &type = *onu.device.type;
    return (block.get(layout::onu_mc_switch_set::mode) == 1 ? type.multicast_control : type.igmp_snooping)
               ? BSP_OK
               : PON_ERR_NOT_ABLE;
}

constexpr BlockSetting mode{BSP_CMD_ONU_MC_SWITCH_GET, false, mc_mode_size, snooping, check_mode};

bool controlled(const Olt &olt, const RemoteOnu &onu, Side side)
{
    return setting_of(olt, onu, 0, side, mode).get(layout::onu_mc_switch::mode) == 1;
}

// The following handlers are those of the number of groups.

constexpr uint16_t usual_group_max = 32;

OnuBlock usual_maximum(const Olt &, const RemoteOnu &onu, uint32_t)
{
    OnuBlock block(group_max_size);
    if (knows_multicast(*onu.device.type)) block.put(layout::onu_mc_group_max::maximum, usual_group_max);
    return block;
}

uint32_t check_maximum(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    return is_good_group_max(block) ? able(onu) : PON_ERR_BAD_RECORD;
}

constexpr BlockSetting group_maximum{BSP_CMD_ONU_MC_GROUP_MAX_GET, true, group_max_size, usual_maximum, check_maximum};

uint32_t group_max_of(const Olt &olt, const RemoteOnu &onu, uint32_t uni, Side side)
{
    return setting_of(olt, onu, uni, side, group_maximum).get(layout::onu_mc_group_max::maximum);
}

// The following handlers are those of tags.

OnuBlock tags_kept(const Olt &, const RemoteOnu &, uint32_t)
{
    return OnuBlock(mc_tags_size);
}

uint32_t check_tags(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    return is_good_tags(block) ? able(onu) : PON_ERR_BAD_RECORD;
}

constexpr BlockSetting tags{BSP_CMD_ONU_MC_VLAN_MODE_GET, true, mc_tags_size, tags_kept, check_tags};

// The following handlers are those of VLANs.

std::vector<UniViewers> viewers_of(const Olt &olt, const RemoteOnu &onu)
{
    return viewers_of(olt.seed(), onu.binding->mac, onu.device);
}

OnuBlock first_vlans(const Olt &olt, const RemoteOnu &onu, uint32_t uni)
{
    return block_of(viewers_of(olt, onu)[uni - 1].vlans);
}

OnuBlock vlan_block(const Olt &olt, const RemoteOnu &onu, uint32_t uni, Side side)
{
    return setting_of(olt, onu.key(BSP_CMD_ONU_MC_VLAN_GET, uni), side, first_vlans(olt, onu, uni));
}

std::vector<uint32_t> vlans_of(const Olt &olt, const RemoteOnu &onu, uint32_t uni, Side side)
{
    return vlans_of(vlan_block(olt, onu, uni, side));
}

Outcome get_vlans(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    namespace fields = layout::onu_mc_vlan;
    const uint32_t uni = request.read<bsp_onu_msg>().onu_uni_port;
    const std::vector<uint32_t> vlans = vlans_of(olt, found.onu, uni, Side::remote);
    OnuBlock block(18);
    block.put(fields::operation, mc_list);
    block.put(fields::number, vlans.size());
    for (uint32_t index = 0; index < vlans.size(); ++index)
        block.put(fields::vlan[index], vlans[index]);
    return answer_with(request, block);
}

Outcome get_vlans_local(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_and_uni_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    return answer_with(request, vlan_block(olt, found.onu, request.read<bsp_onu_msg>().onu_uni_port, Side::local));
}

Outcome set_vlans(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    if (const uint32_t status = able(found.onu)) return {status};
    namespace fields = layout::onu_mc_vlan_set;
    const OnuBlock block = data_of(request, 18);
    const auto operation = block.get(fields::operation);
    const auto number = block.get(fields::number);
    if (!fits(operation, number, max_mc_vlans)) return {PON_ERR_BAD_RECORD};
    std::vector<uint32_t> changes;
    for (uint32_t index = 0; index < number; ++index) {
        const uint32_t vlan = block.get(fields::vlan[index]);
        if (!is_vlan(vlan) || has(changes, vlan)) return {PON_ERR_BAD_RECORD};
        changes.push_back(vlan);
    }
    const uint32_t uni = request.read<bsp_onu_msg>().onu_uni_port;
    std::vector<uint32_t> vlans = vlans_of(olt, found.onu, uni, Side::local);
    if (const uint32_t status = change_list(vlans, operation, changes, max_mc_vlans)) return {status};
    return to_outcome(send_setting(olt, found.onu, found.onu.key(BSP_CMD_ONU_MC_VLAN_GET, uni), block_of(vlans),
                                   first_vlans(olt, found.onu, uni)));
}

// The following handlers are those of groups.

std::vector<McGroup> controlled_groups(const Olt &olt, const RemoteOnu &onu, Side side)
{
    return groups_of(setting_of(olt, onu.key(BSP_CMD_ONU_MC_GROUP_GET), side, block_of(std::vector<McGroup>{})));
}

std::vector<McGroup> snooped_groups(const Olt &olt, const RemoteOnu &onu)
{
    const std::vector<std::optional<LinkMode>> links = uni_links(olt, onu);
    const std::vector<UniViewers> viewers = viewers_of(olt, onu);
    std::vector<McGroup> groups;
    for (uint32_t uni = 1; uni <= onu.device.unis.size(); ++uni) {
        if (!links[uni - 1]) continue;
        const auto wanted = wanted_groups(uni, viewers[uni - 1], vlans_of(olt, onu, uni, Side::remote));
        groups.insert(groups.end(), wanted.begin(), wanted.end());
    }
    return groups;
}

// Returns what the ONU's UNI ports have joined: as many of the groups that they are to join as their maxima allow.
std::vector<McGroup> joined_groups(const Olt &olt, const RemoteOnu &onu)
{
    std::vector<uint32_t> room;
    for (uint32_t uni = 1; uni <= onu.device.unis.size(); ++uni)
        room.push_back(group_max_of(olt, onu, uni, Side::remote));
    std::vector<McGroup> groups;
    for (const McGroup &group :
         controlled(olt, onu, Side::remote) ? controlled_groups(olt, onu, Side::remote) : snooped_groups(olt, onu))
        if (group.uni <= room.size() && room[group.uni - 1] > 0) {
            --room[group.uni - 1];
            groups.push_back(group);
        }
    return groups;
}

Outcome get_groups(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    return answer_with(request, block_of(joined_groups(olt, found.onu)));
}

Outcome set_groups(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    if (!found.onu.device.type->multicast_control) return {PON_ERR_NOT_ABLE};
    if (!controlled(olt, found.onu, Side::local)) return {PON_ERR_SNOOPING};
    namespace fields = layout::onu_mc_group_set;
    const OnuBlock block = data_of(request, mc_groups_size);
    const auto action = block.get(fields::action);
    const auto number = block.get(fields::number);
    if (block.get(fields::control_type) != by_mac_and_vlan) return {PON_ERR_BAD_RECORD};
    if (!fits(action, number, max_mc_groups)) return {PON_ERR_BAD_RECORD};
    std::vector<McGroup> changes;
    for (const McGroup &group : groups_of(block)) {
        if (!found.onu.has_uni(group.uni)) return {PON_ERR_NO_UNI};
        if (!is_good(group) || has(changes, group)) return {PON_ERR_BAD_RECORD};
        changes.push_back(group);
    }
    std::vector<McGroup> groups = controlled_groups(olt, found.onu, Side::local);
    if (const uint32_t status = change_list(groups, action, changes, max_mc_groups)) return {status};
    return to_outcome(send_setting(olt, found.onu, found.onu.key(BSP_CMD_ONU_MC_GROUP_GET), block_of(groups),
                                   block_of(std::vector<McGroup>{})));
}

// The following handlers are those of views.

OnuMulticast multicast_of(const Olt &olt, const RemoteOnu &onu)
{
    OnuMulticast shown{onu.port->number,
                       onu.onu_id,
                       onu.device.type,
                       controlled(olt, onu, Side::local),
                       fast_leave_state(olt, onu, Side::local) == 1,
                       {}};
    const std::vector<McGroup> groups = joined_groups(olt, onu);
    for (uint32_t uni = 1; uni <= onu.device.unis.size(); ++uni) {
        const OnuBlock block = setting_of(olt, onu, uni, Side::local, tags);
        UniMulticast part{group_max_of(olt, onu, uni, Side::local), tags_of(block), translations_of(block),
                          vlans_of(olt, onu, uni, Side::local), std::nullopt};
        if (onu.online()) part.groups = static_cast<uint32_t>(std::ranges::count(groups, uni, &McGroup::uni));
        shown.unis.push_back(std::move(part));
    }
    return shown;
}

template <std::string (*table)(const OnuMulticast &)>
Outcome view(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    return {BSP_OK, {}, table(multicast_of(olt, found.onu))};
}

Outcome view_translations(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_and_uni_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    const uint32_t uni = request.read<bsp_onu_msg>().onu_uni_port;
    return {BSP_OK, {}, mc_translation_table(multicast_of(olt, found.onu), uni)};
}

using catalogue::Call;

constexpr auto handlers = family(Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET, get_fast_leave_ability},
                                 rows_of<fast_leave>(BSP_MSG_ONU_CFG),
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_FAST_LEAVE_LOCAL_GET, get_fast_leave_local},
                                 rows_of<mode>(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_SWITCH_LOCAL_GET),
                                 rows_of<group_maximum>(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_GROUP_MAX_LOCAL_GET),
                                 rows_of<tags>(BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_VLAN_MODE_LOCAL_GET),
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_VLAN_GET, get_vlans, Call::get},
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_VLAN_SET, set_vlans, Call::set},
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_VLAN_LOCAL_GET, get_vlans_local},
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_GROUP_GET, get_groups, Call::get},
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_MC_GROUP_SET, set_groups, Call::set},
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_MC_CONFIG, view<mc_config_table>},
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_UNI_MC_CONFIG, view<uni_mc_config_table>},
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_MC_TRANSLATION, view_translations},
                                 Handler{BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_MC_VLAN, view<mc_vlan_table>});

} // namespace

const BlockSetting &multicast_mode_setting()
{
    return mode;
}

const BlockSetting &fast_leave_setting()
{
    return fast_leave;
}

std::span<const Handler> onu_multicast_handlers()
{
    return handlers;
}

} // namespace ponsim
