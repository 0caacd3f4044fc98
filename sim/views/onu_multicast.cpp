#include "views/onu_multicast.h"

#include "bsp_pon.h"
#include "model/plant/onu_multicast.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

void place_cells(Table &table, const OnuMulticast &onu)
{
    table.cell("pon_port", onu.pon_port);
    table.cell("onu_id", onu.onu_id);
}

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
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_MC_CONFIG);
    place_cells(table, onu);
    table.cell("mode", mode_text(onu));
    table.cell("fast_leave", onu.fast_leave);
    table.cell("igmp_snooping", onu.type->igmp_snooping);
    table.cell("multicast_control", onu.type->multicast_control);
    table.cell("fast_leave_able", onu.type->fast_leave);
    table.cell("groups", groups_of(onu));
    return std::string(table.text());
}

std::string uni_mc_config_table(const OnuMulticast &onu)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_UNI_MC_CONFIG);
    for (uint32_t index = 0; index < onu.unis.size(); ++index) {
        const UniMulticast &uni = onu.unis[index];
        place_cells(table, onu);
        table.cell("uni", index + 1);
        table.cell("group_max", uni.group_max);
        table.cell("tags", to_text(uni.tags));
        table.cell("vlans", vlan_text(uni.vlans));
        table.cell("groups", uni.groups);
    }
    return std::string(table.text());
}

std::string mc_translation_table(const OnuMulticast &onu, uint32_t uni)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_MC_TRANSLATION);
    for (const Vlan &translation : onu.unis.at(uni - 1).translations) {
        place_cells(table, onu);
        table.cell("uni", uni);
        table.cell("mc_vlan", translation.network);
        table.cell("user_vlan", translation.user);
    }
    return std::string(table.text());
}

std::string mc_vlan_table(const OnuMulticast &onu)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_MC_VLAN);
    for (uint32_t index = 0; index < onu.unis.size(); ++index)
        for (uint32_t vlan : onu.unis[index].vlans) {
            place_cells(table, onu);
            table.cell("uni", index + 1);
            table.cell("mc_vlan", vlan);
        }
    return std::string(table.text());
}

} // namespace ponsim
