#include "views/onu_identity.h"

#include "views/table.h"

namespace ponsim
{

std::string onu_unis_table(std::span<const OnuUni> unis, bool online)
{
    constexpr uint32_t ge_rate = 1000;
    Table<view::onu_unis> table;
    uint32_t number = 0;
    for (const OnuUni &uni : unis) {
        const std::string link = uni.link ? to_text(*uni.link) : "down";
        table.add({.uni = ++number,
                   .kind = uni.line_rate == ge_rate ? "GE" : "FE",
                   .line_rate = uni.line_rate,
                   .admin = uni.enabled,
                   .autoneg = uni.autoneg,
                   .shut = uni.shut,
                   .link = online ? std::optional<std::string_view>(link) : std::nullopt});
    }
    return table.text();
}

std::string onu_serial_numbers_table(std::span<const RemoteOnu> onus)
{
    Table<view::onu_serial_numbers> table;
    for (const RemoteOnu &onu : onus) {
        const DeviceType &type = *onu.device.type;
        const std::string kind = std::string(type.vendor) + ' ' + std::string(type.model);
        table.add({.id = onu.onu_id,
                   .mac = onu.binding->mac,
                   .dev = onu.online() ? std::optional<std::string_view>(kind) : std::nullopt,
                   .sw = onu.online() ? std::optional(onu.device.software) : std::nullopt});
    }
    return table.text();
}

} // namespace ponsim
