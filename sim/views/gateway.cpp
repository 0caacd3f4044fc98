#include "views/gateway.h"

#include <algorithm>
#include <cstring>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/onu/ipv4.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

constexpr std::string_view wan_modes[] = {"removed", "bridge", "route"};
constexpr std::string_view wan_services[] = {"", "internet", "voice", "management", "other"};
constexpr std::string_view wan_ip_modes[] = {"", "static", "DHCP", "PPPoE"};
constexpr std::string_view wlan_securities[] = {"open", "WPA2", "WPA2/WPA3", "WPA3"};
constexpr std::string_view acl_actions[] = {"removed", "permit", "deny"};
constexpr std::string_view acl_directions[] = {"", "upstream", "downstream"};

template <size_t size>
std::string text_at(const OnuBlock &block, layout::At<layout::Text<size>> at)
{
    const layout::Text<size> text = block.get(at);
    return {text.data(), strnlen(text.data(), size)};
}

std::string network_text(uint32_t address, uint32_t mask)
{
    return ipv4_text(address) + '/' + std::to_string(mask_length(mask));
}

// None where 0 says that there is none.
std::optional<uint32_t> unless_0(uint32_t value)
{
    return value == 0 ? std::nullopt : std::optional(value);
}

std::optional<uint32_t> address_of(const Wan &wan)
{
    return wan.lease ? wan.lease : unless_0(get_ipv4(wan.told, layout::onu_wan::address));
}

void address_cells(Table &table, const Wan &wan)
{
    namespace at = layout::onu_wan;
    const std::optional<uint32_t> address = address_of(wan);
    if (!address) {
        table.cell("address", std::nullopt);
        table.cell("gateway", std::nullopt);
        return;
    }
    const std::optional<uint32_t> gateway = wan.lease ? lease_gateway : unless_0(get_ipv4(wan.told, at::gateway));
    table.cell("address", network_text(*address, wan.lease ? lease_mask : get_ipv4(wan.told, at::mask)));
    table.cell("gateway", gateway ? std::optional(ipv4_text(*gateway)) : std::nullopt);
}

void add_wan(Table &table, const Wan &wan)
{
    namespace at = layout::onu_wan;
    const auto ip_mode = wan.told.get(at::ip_mode);
    table.cell("index", wan.index);
    table.cell("name", text_at(wan.told, at::name));
    table.cell("mode", wan_modes[wan.told.get(at::mode)]);
    table.cell("service", wan_services[wan.told.get(at::service)]);
    table.cell("vlan", unless_0(wan.told.get(at::vlan)));
    table.cell("priority", uint32_t{wan.told.get(at::priority)});
    table.cell("ip_mode", ip_mode == ip_none ? std::nullopt : std::optional(wan_ip_modes[ip_mode]));
    address_cells(table, wan);
    table.cell("state", std::string_view(wan.up ? "up" : "connecting"));
}

void network_cell(Table &table, std::string_view name, uint32_t address, uint32_t mask)
{
    table.cell(name, mask == 0 ? std::nullopt : std::optional(network_text(address, mask)));
}

void add_rule(Table &table, const AclRule &rule)
{
    namespace at = layout::onu_acl;
    table.cell("index", rule.index);
    table.cell("action", acl_actions[rule.told.get(at::action)]);
    table.cell("direction", acl_directions[rule.told.get(at::direction)]);
    table.cell("protocol", unless_0(rule.told.get(at::protocol)));
    network_cell(table, "source", get_ipv4(rule.told, at::source), get_ipv4(rule.told, at::source_mask));
    network_cell(table, "dest", get_ipv4(rule.told, at::dest), get_ipv4(rule.told, at::dest_mask));
    table.cell("first_port", unless_0(rule.told.get(at::first_port)));
    table.cell("last_port", unless_0(rule.told.get(at::last_port)));
}

void voice_cells(Table &table, const VoicePort &port, bool online)
{
    table.cell("pots", port.pots);
    table.cell("user", std::string_view(port.user));
    table.cell("server", std::string_view(port.server));
    const std::string_view state = port.registered ? "registered" : "unregistered";
    table.cell("state", online ? std::optional(state) : std::nullopt);
}

void catv_cells(Table &table, const Catv &catv, bool online)
{
    table.cell("on", catv.on);
    table.cell("input", online ? std::optional(catv.input) : std::nullopt);
}

void place_cells(Table &table, const UserServices &onu)
{
    table.cell("pon_port", onu.pon_port);
    table.cell("onu_id", onu.onu_id);
}

bool is_enabled(const Wlan &wlan)
{
    return wlan.told.get(layout::onu_wlan::enabled) != 0;
}

} // namespace

std::string wan_table(const UserServices &onu, uint32_t index)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_WAN);
    for (const Wan &wan : onu.wans)
        if (index == 0 || index == wan.index) add_wan(table, wan);
    return std::string(table.text());
}

std::string wlan_table(const UserServices &onu)
{
    namespace at = layout::onu_wlan;
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_WLAN);
    for (const Wlan &wlan : onu.wlans) {
        table.cell("index", wlan.index);
        table.cell("enabled", is_enabled(wlan));
        table.cell("name", text_at(wlan.told, at::name));
        table.cell("channel", unless_0(wlan.told.get(at::channel)));
        table.cell("security", wlan_securities[wlan.told.get(at::security)]);
        table.cell("hidden", wlan.told.get(at::hidden) != 0);
        table.cell("clients", wlan.clients);
    }
    return std::string(table.text());
}

std::string catv_table(const UserServices &onu)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_CATV);
    if (onu.catv) catv_cells(table, *onu.catv, onu.online);
    return std::string(table.text());
}

std::string voip_table(const UserServices &onu)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_VOIP);
    for (const VoicePort &port : onu.voice)
        voice_cells(table, port, onu.online);
    return std::string(table.text());
}

std::string acl_table(const UserServices &onu)
{
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_ACL);
    for (const AclRule &rule : onu.acl)
        add_rule(table, rule);
    return std::string(table.text());
}

std::string dhcp_table(const UserServices &onu)
{
    namespace at = layout::onu_dhcp;
    Table table(BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_DHCP);
    if (onu.dhcp) {
        const OnuBlock &told = onu.dhcp->told;
        table.cell("enabled", told.get(at::enabled) != 0);
        table.cell("address", network_text(get_ipv4(told, at::address), get_ipv4(told, at::mask)));
        table.cell("first", ipv4_text(get_ipv4(told, at::first)));
        table.cell("last", ipv4_text(get_ipv4(told, at::last)));
        table.cell("lease_time", told.get(at::lease_time));
        table.cell("leases", onu.dhcp->leases);
    }
    return std::string(table.text());
}

std::string wlans_of_port_table(std::span<const UserServices> onus)
{
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_ONU_WLAN_TABLE);
    for (const UserServices &onu : onus) {
        if (onu.wlans.empty()) continue;
        uint32_t clients = 0;
        for (const Wlan &wlan : onu.wlans)
            clients += wlan.clients;
        place_cells(table, onu);
        table.cell("wlans", static_cast<uint32_t>(onu.wlans.size()));
        table.cell("enabled", static_cast<uint32_t>(std::ranges::count_if(onu.wlans, is_enabled)));
        table.cell("clients", onu.online ? std::optional(clients) : std::nullopt);
    }
    return std::string(table.text());
}

std::string wans_of_port_table(std::span<const UserServices> onus)
{
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_ONU_WAN_TABLE);
    for (const UserServices &onu : onus) {
        const auto up = static_cast<uint32_t>(std::ranges::count_if(onu.wans, &Wan::up));
        const auto addressed =
            std::ranges::find_if(onu.wans, [](const Wan &wan) { return address_of(wan).has_value(); });
        place_cells(table, onu);
        table.cell("wans", static_cast<uint32_t>(onu.wans.size()));
        table.cell("up", onu.online ? std::optional(up) : std::nullopt);
        table.cell("address",
                   addressed == onu.wans.end() ? std::nullopt : std::optional(ipv4_text(*address_of(*addressed))));
    }
    return std::string(table.text());
}

std::string catv_of_port_table(std::span<const UserServices> onus)
{
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_ONU_CATV_TABLE);
    for (const UserServices &onu : onus) {
        if (!onu.catv) continue;
        place_cells(table, onu);
        catv_cells(table, *onu.catv, onu.online);
    }
    return std::string(table.text());
}

std::string sip_of_port_table(std::span<const UserServices> onus)
{
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_ONU_SIP_TABLE);
    for (const UserServices &onu : onus)
        for (const VoicePort &port : onu.voice) {
            place_cells(table, onu);
            voice_cells(table, port, onu.online);
        }
    return std::string(table.text());
}

} // namespace ponsim
