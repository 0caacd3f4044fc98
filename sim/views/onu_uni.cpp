#include "views/onu_uni.h"

#include "views/table.h"

namespace ponsim
{

std::string onu_links_table(std::span<const UniLink> unis)
{
    Table<view::onu_links> table;
    uint32_t number = 0;
    for (const UniLink &uni : unis)
        table.add({.uni = ++number, .admin = uni.enabled, .link = uni.link, .shut = uni.shut});
    return table.text();
}

std::string onu_vlans_table(uint32_t pon_port, uint32_t onu_id, std::span<const UniConfig> configs)
{
    Table<view::onu_vlans> table;
    uint32_t number = 0;
    for (const UniConfig &config : configs)
        table.add({.pon_port = pon_port,
                   .onu_id = onu_id,
                   .uni = ++number,
                   .vlan_mode = to_text(config.vlan_mode),
                   .pvid = config.pvid,
                   .priority = config.priority,
                   .tpid = config.tpid,
                   .vlans = vlan_text(config)});
    return table.text();
}

} // namespace ponsim
