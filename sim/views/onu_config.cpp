#include "views/onu_config.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/lifecycle/authentication.h"
#include "model/olt/uni_config.h"
#include "model/onu/ipv4.h"
#include "model/onu/onu_config.h"
#include "views/devices.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

// Returns a private address that no two stations share, because the last three bytes make their MAC addresses unique.
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

void add(Table<view::uni_profiles> &table, const UniProfileRow &profile)
{
    namespace at = layout::onu_port_config_set;
    const OnuBlock &config = profile.config;
    const auto limit = [&config](layout::At<uint8_t> on, layout::At<uint32_t> at) {
        return config.get(on) ? std::optional(config.get(at)) : std::nullopt;
    };
    const UniConfig vlans = vlans_of(config);
    table.add({.id = profile.id,
               .admin = config.get(at::admin) != 0,
               .autoneg = config.get(at::autoneg) != 0,
               .pause = config.get(at::pause) != 0,
               .up_cir = limit(at::up_on, at::up_cir),
               .up_cbs = limit(at::up_on, at::up_cbs),
               .up_ebs = limit(at::up_on, at::up_ebs),
               .down_cir = limit(at::down_on, at::down_cir),
               .down_pir = limit(at::down_on, at::down_pir),
               .vlan_mode = to_text(vlans.vlan_mode),
               .pvid = vlans.pvid,
               .priority = vlans.priority,
               .tpid = vlans.tpid,
               .vlans = vlan_text(vlans),
               .ports = profile.ports});
}

} // namespace

std::string loids_table(const Olt &olt, std::span<const PonPort> ports)
{
    Table<view::loids> table;
    for (const PonPort &port : ports)
        for (const LoidRecord &record : loid_records(olt, port))
            table.add({.pon_port = port.number,
                       .loid = record.loid,
                       .has_password = record.has_password,
                       .mac = record.mac,
                       .onu_id = record.onu_id});
    return table.text();
}

std::string arp_table(std::span<const FdbEntry> entries)
{
    Table<view::arp> table;
    for (const FdbEntry &entry : entries)
        table.add({.onu_id = entry.onu_id.value(),
                   .uni = entry.uni,
                   .ip = ipv4_text(address_of(entry.mac)),
                   .mac = entry.mac,
                   .vlan = entry.vlan,
                   .interface = "pon" + std::to_string(entry.port)});
    return table.text();
}

std::string uni_profiles_table(std::span<const UniProfileRow> profiles)
{
    Table<view::uni_profiles> table;
    for (const UniProfileRow &profile : profiles)
        add(table, profile);
    return table.text();
}

} // namespace ponsim
