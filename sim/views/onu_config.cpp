#include "views/onu_config.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/lifecycle/authentication.h"
#include "model/onu/ipv4.h"
#include "model/onu/onu_config.h"
#include "model/onu/uni_config.h"
#include "views/devices.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

// Private, and of no two stations the same: what makes their MAC addresses unique is in the last three bytes.
uint32_t address_of(const Mac &station)
{
    return uint32_t{10} << 24 | uint32_t{station[3]} << 16 | uint32_t{station[4]} << 8 | (station[5] + 1u);
}

UniConfig vlans_of(const OnuBlock &config)
{
    UniConfig vlans{};
    for (const ConfigPart &part : parts_of(config))
        if (part.command == BSP_CMD_ONU_VLAN_GET) take_vlan(part.block, vlans);
    return vlans;
}

void add(Table &table, const UniProfileRow &profile)
{
    namespace at = layout::onu_port_config_set;
    const OnuBlock &config = profile.config;
    const auto flag = [&](std::string_view name, layout::At<uint8_t> at) { table.cell(name, config.get(at) != 0); };
    const auto limit = [&](std::string_view name, layout::At<uint8_t> on, layout::At<uint32_t> at) {
        table.cell(name, config.get(on) ? std::optional(config.get(at)) : std::nullopt);
    };
    const UniConfig vlans = vlans_of(config);
    table.cell("id", profile.id);
    flag("admin", at::admin);
    flag("autoneg", at::autoneg);
    flag("pause", at::pause);
    limit("up_cir", at::up_on, at::up_cir);
    limit("up_cbs", at::up_on, at::up_cbs);
    limit("up_ebs", at::up_on, at::up_ebs);
    limit("down_cir", at::down_on, at::down_cir);
    limit("down_pir", at::down_on, at::down_pir);
    table.cell("vlan_mode", to_text(vlans.vlan_mode));
    table.cell("pvid", vlans.pvid);
    table.cell("priority", vlans.priority);
    table.cell("tpid", vlans.tpid);
    table.cell("vlans", vlan_text(vlans));
    table.cell("ports", profile.ports);
}

} // namespace

std::string loids_table(const Olt &olt, std::span<const PonPort> ports)
{
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_LOID_LIST);
    for (const PonPort &port : ports)
        for (const LoidRecord &record : loid_records(olt, port)) {
            table.cell("pon_port", port.number);
            table.cell("loid", record.loid);
            table.cell("has_password", record.has_password);
            table.cell("mac", record.mac);
            table.cell("onu_id", record.onu_id);
        }
    return std::string(table.text());
}

std::string arp_table(std::span<const FdbEntry> entries)
{
    Table table(BSP_MSG_PON, BSP_CMD_ARP_TABLE);
    for (const FdbEntry &entry : entries) {
        table.cell("onu_id", entry.onu_id);
        table.cell("uni", entry.uni);
        table.cell("ip", std::string_view(ipv4_text(address_of(entry.mac))));
        table.cell("mac", entry.mac);
        table.cell("vlan", entry.vlan);
        table.cell("interface", std::string_view("pon" + std::to_string(entry.port)));
    }
    return std::string(table.text());
}

std::string uni_profiles_table(std::span<const UniProfileRow> profiles)
{
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_UNI_PROFILE);
    for (const UniProfileRow &profile : profiles)
        add(table, profile);
    return std::string(table.text());
}

} // namespace ponsim
