#include "views/devices.h"

#include <algorithm>

#include "views/table.h"

namespace ponsim
{
namespace
{

uint32_t count_of(size_t count)
{
    return static_cast<uint32_t>(count);
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
    Table<view::onu_capabilities> table;
    for (const BoundOnu &onu : onus) {
        const DeviceType &type = *onu.device.type;
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .mac = onu.binding->mac,
                   .vendor = type.vendor,
                   .model = type.model,
                   .chipset = type.chipset,
                   .ge_ports = type.ge_ports,
                   .fe_ports = type.fe_ports,
                   .pots_ports = type.pots_ports,
                   .us_queues = type.us_queues,
                   .fec = type.fec,
                   .battery = type.battery,
                   .igmp_snooping = type.igmp_snooping,
                   .multicast_control = type.multicast_control,
                   .fast_leave = type.fast_leave,
                   .vlan_translation = type.vlan_translation,
                   .vlan_trunk = type.vlan_trunk,
                   .max_vlans = type.vlan_translation || type.vlan_trunk ? max_vlans : 0});
    }
    return table.text();
}

std::string upgrade_table(std::span<const BoundOnu> onus)
{
    Table<view::upgrade_base_info> table;
    for (const BoundOnu &onu : onus)
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .mac = onu.binding->mac,
                   .state = to_text(onu.state),
                   .vendor = onu.device.type->vendor,
                   .model = onu.device.type->model,
                   .hardware = onu.device.hardware,
                   .software = onu.device.software,
                   .type = onu.upgrade.type,
                   .run = onu.upgrade.state,
                   .progress = onu.upgrade.progress,
                   .reason = onu.upgrade.reason});
    return table.text();
}

std::string uni_attributes_table(std::span<const BoundOnu> onus)
{
    Table<view::uni_attributes> table;
    for (const BoundOnu &onu : onus)
        for (uint32_t index = 0; index < onu.configs.size(); ++index) {
            const UniConfig &config = onu.configs[index];
            table.add({.pon_port = onu.pon_port,
                       .onu_id = onu.onu_id,
                       .uni = index + 1,
                       .admin = config.enabled,
                       .link = link_text(onu.state, onu.links[index]),
                       .autoneg = config.autoneg,
                       .pause = config.pause,
                       .ingress = config.ingress,
                       .egress = config.egress});
        }
    return table.text();
}

std::string onu_config_table(std::span<const BoundOnu> onus)
{
    Table<view::onu_config> table;
    for (const BoundOnu &onu : onus)
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .mac = onu.binding->mac,
                   .state = to_text(onu.state),
                   .vendor = onu.device.type->vendor,
                   .model = onu.device.type->model,
                   .hardware = onu.device.hardware,
                   .software = onu.device.software,
                   .unis = count_of(onu.configs.size()),
                   .enabled = count_of(std::ranges::count_if(onu.configs, &UniConfig::enabled)),
                   .mode = onu.binding->mode,
                   .text_a = onu.binding->text_a,
                   .text_b = onu.binding->text_b,
                   .text_c = onu.binding->text_c,
                   .description = onu.binding->description});
    return table.text();
}

std::string uni_config_table(std::span<const BoundOnu> onus)
{
    Table<view::uni_config> table;
    for (const BoundOnu &onu : onus)
        for (uint32_t index = 0; index < onu.configs.size(); ++index) {
            const UniConfig &config = onu.configs[index];
            const std::string_view duplex = config.forced.full_duplex ? "full" : "half";
            table.add({.pon_port = onu.pon_port,
                       .onu_id = onu.onu_id,
                       .uni = index + 1,
                       .line_rate = onu.device.unis[index].line_rate,
                       .admin = config.enabled,
                       .link = link_text(onu.state, onu.links[index]),
                       .autoneg = config.autoneg,
                       .speed = config.autoneg ? std::nullopt : std::optional(config.forced.speed),
                       .duplex = config.autoneg ? std::nullopt : std::optional(duplex),
                       .pause = config.pause,
                       .ingress = config.ingress,
                       .egress = config.egress,
                       .vlan_mode = to_text(config.vlan_mode),
                       .pvid = config.pvid,
                       .vlans = vlan_text(config)});
        }
    return table.text();
}

std::string vlan_modes_table(std::span<const UniGroup> groups)
{
    Table<view::vlan_modes> table;
    for (const UniGroup &group : groups) {
        const auto in_mode = [&group](VlanMode mode) {
            return count_of(std::ranges::count(group.configs, mode, &UniConfig::vlan_mode));
        };
        table.add({.pon_port = group.pon_port,
                   .onu_id = group.onu_id,
                   .uni = group.uni,
                   .transp = in_mode(VlanMode::transparent),
                   .tag = in_mode(VlanMode::tag),
                   .transl = in_mode(VlanMode::translation),
                   .trunk = in_mode(VlanMode::trunk)});
    }
    return table.text();
}

std::string vlan_lists_table(std::span<const UniGroup> groups)
{
    Table<view::vlan_lists> table;
    for (const UniGroup &group : groups) {
        size_t vlans = 0;
        for (const UniConfig &config : group.configs)
            vlans += config.vlans.size();
        const UniConfig *config = group.uni ? &group.configs.front() : nullptr;
        table.add({.pon_port = group.pon_port,
                   .onu_id = group.onu_id,
                   .uni = group.uni,
                   .pvid = config ? std::optional(config->pvid) : std::nullopt,
                   .vlans = count_of(vlans),
                   .list = config ? vlan_text(*config) : std::nullopt});
    }
    return table.text();
}

} // namespace ponsim
