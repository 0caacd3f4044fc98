#include "views/onu_multicast.h"

#include "model/plant/onu_multicast.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

std::optional<std::string_view> mode_text(const OnuMulticast &onu)
{
    if (!knows_multicast(*onu.type)) return std::nullopt;
    return onu.controlled ? "control" : "snooping";
}

std::optional<uint32_t> groups_of(const OnuMulticast &onu)
{
    uint32_t groups = 0;
    for (const UniMulticast &uni : onu.unis) {
        if (!uni.groups) return std::nullopt;
        groups += *uni.groups;
    }
    return groups;
}

std::string_view to_text(McTags tags)
{
    constexpr std::string_view names[] = {"keep", "strip", "translate"};
    return names[static_cast<size_t>(tags)];
}

std::optional<std::string> vlan_text(const std::vector<uint32_t> &vlans)
{
    if (vlans.empty()) return std::nullopt;
    std::string text;
    for (uint32_t vlan : vlans) {
        if (!text.empty()) text += ',';
        text += std::to_string(vlan);
    }
    return text;
}

} // namespace

std::string mc_config_table(const OnuMulticast &onu)
{
    Table<view::onu_mc_config> table;
    table.add({.pon_port = onu.pon_port,
               .onu_id = onu.onu_id,
               .mode = mode_text(onu),
               .fast_leave = onu.fast_leave,
               .igmp_snooping = onu.type->igmp_snooping,
               .multicast_control = onu.type->multicast_control,
               .fast_leave_able = onu.type->fast_leave,
               .groups = groups_of(onu)});
    return table.text();
}

std::string uni_mc_config_table(const OnuMulticast &onu)
{
    Table<view::onu_uni_mc_config> table;
    for (uint32_t index = 0; index < onu.unis.size(); ++index) {
        const UniMulticast &uni = onu.unis[index];
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .uni = index + 1,
                   .group_max = uni.group_max,
                   .tags = to_text(uni.tags),
                   .vlans = vlan_text(uni.vlans),
                   .groups = uni.groups});
    }
    return table.text();
}

std::string mc_translation_table(const OnuMulticast &onu, uint32_t uni)
{
    Table<view::onu_mc_translation> table;
    for (const Vlan &translation : onu.unis.at(uni - 1).translations)
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .uni = uni,
                   .mc_vlan = translation.network,
                   .user_vlan = translation.user});
    return table.text();
}

std::string mc_vlan_table(const OnuMulticast &onu)
{
    Table<view::onu_mc_vlans> table;
    for (uint32_t index = 0; index < onu.unis.size(); ++index)
        for (uint32_t vlan : onu.unis[index].vlans)
            table.add({.pon_port = onu.pon_port, .onu_id = onu.onu_id, .uni = index + 1, .mc_vlan = vlan});
    return table.text();
}

} // namespace ponsim
