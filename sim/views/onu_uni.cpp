#include "views/onu_uni.h"

#include "bsp_pon.h"
#include "views/table.h"

namespace ponsim
{

std::string onu_links_table(std::span<const UniLink> unis)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_ONU_LINK_STATE_GET);
    uint32_t number = 0;
    for (const UniLink &uni : unis) {
        table.cell("uni", ++number);
        table.cell("admin", uni.enabled);
        table.cell("link", uni.link);
        table.cell("shut", uni.shut);
    }
    return std::string(table.text());
}

std::string onu_vlans_table(uint32_t pon_port, uint32_t onu_id, std::span<const UniConfig> configs)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_VLAN);
    uint32_t number = 0;
    for (const UniConfig &config : configs) {
        table.cell("pon_port", pon_port);
        table.cell("onu_id", onu_id);
        table.cell("uni", ++number);
        table.cell("vlan_mode", to_text(config.vlan_mode));
        table.cell("pvid", config.pvid);
        table.cell("priority", config.priority);
        table.cell("tpid", config.tpid);
        table.cell("vlans", vlan_text(config));
    }
    return std::string(table.text());
}

} // namespace ponsim
