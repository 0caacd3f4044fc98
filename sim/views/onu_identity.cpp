#include "views/onu_identity.h"

#include "bsp_pon.h"
#include "views/table.h"

namespace ponsim
{

std::string onu_unis_table(std::span<const OnuUni> unis, bool online)
{
    constexpr uint32_t ge_rate = 1000;
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_UNI_SNMP);
    uint32_t number = 0;
    for (const OnuUni &uni : unis) {
        table.cell("uni", ++number);
        table.cell("kind", std::string_view(uni.line_rate == ge_rate ? "GE" : "FE"));
        table.cell("line_rate", uni.line_rate);
        table.cell("admin", uni.enabled);
        table.cell("autoneg", uni.autoneg);
        table.cell("shut", uni.shut);
        const std::string link = uni.link ? to_text(*uni.link) : "down";
        table.cell("link", online ? std::optional<std::string_view>(link) : std::nullopt);
    }
    return std::string(table.text());
}

std::string onu_serial_numbers_table(std::span<const RemoteOnu> onus)
{
    Table table(BSP_MSG_ONU_OAM, BSP_CMD_VIEW_ONU_SN);
    for (const RemoteOnu &onu : onus) {
        const DeviceType &type = *onu.device.type;
        table.cell("id", onu.onu_id);
        table.cell("mac", onu.binding->mac);
        const std::string kind = std::string(type.vendor) + ' ' + std::string(type.model);
        table.cell("dev", onu.online() ? std::optional<std::string_view>(kind) : std::nullopt);
        table.cell("sw", onu.online() ? std::optional(onu.device.software) : std::nullopt);
    }
    return std::string(table.text());
}

} // namespace ponsim
