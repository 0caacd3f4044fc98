#include "views/devices.h"

#include <algorithm>

#include "bsp_pon.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

void place_cells(Table &table, const BoundOnu &onu)
{
    table.cell("pon_port", onu.pon_port);
    table.cell("onu_id", onu.onu_id);
}

void identity_cells(Table &table, const BoundOnu &onu)
{
    place_cells(table, onu);
    table.cell("mac", onu.binding->mac);
    table.cell("state", to_text(onu.state));
    table.cell("vendor", onu.device.type->vendor);
    table.cell("model", onu.device.type->model);
    table.cell("hardware", onu.device.hardware);
    table.cell("software", onu.device.software);
}

// A table with rows that a function adds for each of the items.
template <class Items>
std::string table_of(uint32_t channel, uint32_t command, const Items &items,
                     void (*add)(Table &, const typename Items::value_type &))
{
    Table table(channel, command);
    for (const auto &item : items)
        add(table, item);
    return std::string(table.text());
}

void add_capabilities(Table &table, const BoundOnu &onu)
{
    const DeviceType &type = *onu.device.type;
    place_cells(table, onu);
    table.cell("mac", onu.binding->mac);
    table.cell("vendor", type.vendor);
    table.cell("model", type.model);
    table.cell("chipset", type.chipset);
    table.cell("ge_ports", type.ge_ports);
    table.cell("fe_ports", type.fe_ports);
    table.cell("pots_ports", type.pots_ports);
    table.cell("us_queues", type.us_queues);
    table.cell("fec", type.fec);
    table.cell("battery", type.battery);
    table.cell("igmp_snooping", type.igmp_snooping);
    table.cell("multicast_control", type.multicast_control);
    table.cell("fast_leave", type.fast_leave);
    table.cell("vlan_translation", type.vlan_translation);
    table.cell("vlan_trunk", type.vlan_trunk);
    table.cell("max_vlans", type.vlan_translation || type.vlan_trunk ? max_vlans : 0);
}

void add_upgrade(Table &table, const BoundOnu &onu)
{
    identity_cells(table, onu);
    table.cell("type", onu.upgrade.type);
    table.cell("run", onu.upgrade.state);
    table.cell("progress", onu.upgrade.progress);
    table.cell("reason", onu.upgrade.reason);
}

void add_uni_attributes(Table &table, const BoundOnu &onu)
{
    for (uint32_t index = 0; index < onu.configs.size(); ++index) {
        const UniConfig &config = onu.configs[index];
        place_cells(table, onu);
        table.cell("uni", index + 1);
        table.cell("admin", config.enabled);
        table.cell("link", link_text(onu.state, onu.links[index]));
        table.cell("autoneg", config.autoneg);
        table.cell("pause", config.pause);
        table.cell("ingress", config.ingress);
        table.cell("egress", config.egress);
    }
}

void add_onu_config(Table &table, const BoundOnu &onu)
{
    const auto enabled = std::ranges::count_if(onu.configs, &UniConfig::enabled);
    identity_cells(table, onu);
    table.cell("unis", static_cast<uint32_t>(onu.configs.size()));
    table.cell("enabled", static_cast<uint32_t>(enabled));
    table.cell("mode", onu.binding->mode);
    table.cell("text_a", std::string_view(onu.binding->text_a));
    table.cell("text_b", std::string_view(onu.binding->text_b));
    table.cell("text_c", std::string_view(onu.binding->text_c));
    table.cell("description", std::string_view(onu.binding->description));
}

void add_uni_configs(Table &table, const BoundOnu &onu)
{
    for (uint32_t index = 0; index < onu.configs.size(); ++index) {
        const UniConfig &config = onu.configs[index];
        place_cells(table, onu);
        table.cell("uni", index + 1);
        table.cell("line_rate", onu.device.unis[index].line_rate);
        table.cell("admin", config.enabled);
        table.cell("link", link_text(onu.state, onu.links[index]));
        table.cell("autoneg", config.autoneg);
        if (config.autoneg) {
            table.cell("speed", std::nullopt);
            table.cell("duplex", std::nullopt);
        } else {
            table.cell("speed", config.forced.speed);
            table.cell("duplex", std::string_view(config.forced.full_duplex ? "full" : "half"));
        }
        table.cell("pause", config.pause);
        table.cell("ingress", config.ingress);
        table.cell("egress", config.egress);
        table.cell("vlan_mode", to_text(config.vlan_mode));
        table.cell("pvid", config.pvid);
        table.cell("vlans", vlan_text(config));
    }
}

void group_cells(Table &table, const UniGroup &group)
{
    table.cell("pon_port", group.pon_port);
    table.cell("onu_id", group.onu_id);
    table.cell("uni", group.uni);
}

void add_vlan_modes(Table &table, const UniGroup &group)
{
    const auto in_mode = [&group](VlanMode mode) {
        return static_cast<uint32_t>(std::ranges::count(group.configs, mode, &UniConfig::vlan_mode));
    };
    group_cells(table, group);
    table.cell("transp", in_mode(VlanMode::transparent));
    table.cell("tag", in_mode(VlanMode::tag));
    table.cell("transl", in_mode(VlanMode::translation));
    table.cell("trunk", in_mode(VlanMode::trunk));
}

void add_vlan_lists(Table &table, const UniGroup &group)
{
    uint32_t vlans = 0;
    for (const UniConfig &config : group.configs)
        vlans += static_cast<uint32_t>(config.vlans.size());
    group_cells(table, group);
    if (group.uni) {
        const UniConfig &config = group.configs.front();
        table.cell("pvid", config.pvid);
        table.cell("vlans", vlans);
        table.cell("list", vlan_text(config));
    } else {
        table.cell("pvid", std::nullopt);
        table.cell("vlans", vlans);
        table.cell("list", std::nullopt);
    }
}

} // namespace

std::optional<std::string> link_text(OnuState state, const std::optional<LinkMode> &link)
{
    if (state != OnuState::online) return std::nullopt;
    return link ? to_text(*link) : "down";
}

std::optional<std::string> vlan_text(const UniConfig &config)
{
    if (config.vlans.empty()) return std::nullopt;
    return to_text(config.vlans);
}

std::string capabilities_table(std::span<const BoundOnu> onus)
{
    return table_of(BSP_MSG_PON, BSP_CMD_VIEW_ONU_CAP_SNMP, onus, add_capabilities);
}

std::string upgrade_table(std::span<const BoundOnu> onus)
{
    return table_of(BSP_MSG_PON, BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, onus, add_upgrade);
}

std::string uni_attributes_table(std::span<const BoundOnu> onus)
{
    return table_of(BSP_MSG_PON, BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP, onus, add_uni_attributes);
}

std::string onu_config_table(std::span<const BoundOnu> onus)
{
    return table_of(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_CONFIG, onus, add_onu_config);
}

std::string uni_config_table(std::span<const BoundOnu> onus)
{
    return table_of(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_PORT_CONFIG, onus, add_uni_configs);
}

std::string vlan_modes_table(std::span<const UniGroup> groups)
{
    return table_of(BSP_MSG_ONU_SNMP, BSP_CMD_VIEW_VLAN_MODE_SNMP, groups, add_vlan_modes);
}

std::string vlan_lists_table(std::span<const UniGroup> groups)
{
    return table_of(BSP_MSG_ONU_SNMP, BSP_CMD_VIEW_VLAN_LIST_SNMP, groups, add_vlan_lists);
}

} // namespace ponsim
