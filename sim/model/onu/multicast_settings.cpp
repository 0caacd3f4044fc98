#include "model/onu/multicast_settings.h"

#include "generated/service_words.h"

namespace ponsim
{
namespace
{

std::vector<Vlan> pairs_of(const OnuBlock &block, uint32_t from, uint32_t to)
{
    namespace fields = layout::onu_mc_vlan_mode;
    std::vector<Vlan> pairs;
    for (uint32_t index = from; index < to; ++index)
        pairs.push_back({.user = block.get(fields::user_vlan[index]), .network = block.get(fields::mc_vlan[index])});
    return pairs;
}

// Returns whether each of the values is good and is there once.
template <class Value>
bool are_good(const std::vector<Value> &values, bool (*is_good_value)(const Value &))
{
    std::vector<Value> seen;
    for (const Value &value : values) {
        if (!is_good_value(value) || has(seen, value)) return false;
        seen.push_back(value);
    }
    return true;
}

} // namespace

bool is_good(const McGroup &group)
{
    return group.uni >= 1 && group.uni <= max_unis && is_vlan(group.vlan) && is_group(group.mac);
}

McTags tags_of(const OnuBlock &block)
{
    return static_cast<McTags>(block.get(layout::onu_mc_vlan_mode::mode));
}

std::vector<Vlan> translations_of(const OnuBlock &block)
{
    return pairs_of(block, 0, block.get(layout::onu_mc_vlan_mode::number));
}

OnuBlock block_of(const std::vector<uint32_t> &vlans)
{
    namespace fields = layout::onu_mc_vlan_local;
    OnuBlock block(mc_vlans_size);
    for (uint32_t index = 0; index < vlans.size(); ++index)
        block.put(fields::vlan[index], vlans[index]);
    return block;
}

std::vector<uint32_t> vlans_of(const OnuBlock &block)
{
    namespace fields = layout::onu_mc_vlan_local;
    std::vector<uint32_t> vlans;
    for (uint32_t index = 0; index < max_mc_vlans; ++index)
        if (const auto vlan = block.get(fields::vlan[index])) vlans.push_back(vlan);
    return vlans;
}

OnuBlock block_of(const std::vector<McGroup> &groups)
{
    namespace fields = layout::onu_mc_group;
    OnuBlock block(mc_groups_size);
    block.put(fields::action, mc_list);
    block.put(fields::control_type, by_mac_and_vlan);
    block.put(fields::number, groups.size());
    for (uint32_t index = 0; index < groups.size(); ++index) {
        block.put(fields::uni[index], groups[index].uni);
        block.put(fields::vlan[index], groups[index].vlan);
        block.put(fields::group[index], groups[index].mac);
    }
    return block;
}

std::vector<McGroup> groups_of(const OnuBlock &block)
{
    namespace fields = layout::onu_mc_group;
    std::vector<McGroup> groups;
    for (uint32_t index = 0; index < block.get(fields::number); ++index)
        groups.push_back(
            {block.get(fields::uni[index]), block.get(fields::vlan[index]), block.get(fields::group[index])});
    return groups;
}

bool is_good_fast_leave(const OnuBlock &block)
{
    return block.get(layout::onu_fast_leave::state) <= 1;
}

bool is_good_mc_mode(const OnuBlock &block)
{
    return block.get(layout::onu_mc_switch::mode) <= 1;
}

bool is_good_group_max(const OnuBlock &block)
{
    return block.get(layout::onu_mc_group_max::maximum) <= max_uni_mc_groups;
}

bool is_good_tags(const OnuBlock &block)
{
    const auto number = block.get(layout::onu_mc_vlan_mode::number);
    if (tags_of(block) > McTags::translate || number > max_mc_translations) return false;
    if ((tags_of(block) == McTags::translate) != (number > 0)) return false;
    std::vector<uint32_t> networks;
    for (const Vlan &pair : translations_of(block)) {
        if (!is_vlan(pair.user)) return false;
        networks.push_back(pair.network);
    }
    const std::vector<Vlan> unused = pairs_of(block, number, max_mc_translations);
    return are_good<uint32_t>(networks, [](const uint32_t &vlan) { return is_vlan(vlan); }) &&
           std::ranges::all_of(unused, [](const Vlan &pair) {
               return pair == Vlan{0, 0};
           });
}

bool is_good_vlans(const OnuBlock &block)
{
    const std::vector<uint32_t> vlans = vlans_of(block);
    return block == block_of(vlans) && are_good<uint32_t>(vlans, [](const uint32_t &vlan) { return is_vlan(vlan); });
}

bool is_good_groups(const OnuBlock &block)
{
    if (block.get(layout::onu_mc_group::number) > max_mc_groups) return false;
    const std::vector<McGroup> groups = groups_of(block);
    return block == block_of(groups) && are_good<McGroup>(groups, is_good);
}

} // namespace ponsim
