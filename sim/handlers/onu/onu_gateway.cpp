// These commands concern what ONUs do for their users: WAN connections, WLAN, CATV, voice, ACL and DHCP.
#include <cstddef>

#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/onu/gateway.h"
#include "model/onu/ipv4.h"
#include "views/gateway.h"

namespace ponsim
{
namespace
{

constexpr uint8_t max_channel = 13;
constexpr uint32_t shortest_lease = 60, longest_lease = 864000; // s

// Returns whether the field holds a text that is not empty.
template <size_t size>
bool has_name(const OnuBlock &block, layout::At<layout::Text<size>> at)
{
    std::string name;
    return get_text(block.get(at), name) && !name.empty();
}

bool is_good_address(const OnuBlock &block)
{
    namespace at = layout::onu_wan;
    const uint32_t address = get_ipv4(block, at::address);
    const uint32_t mask = get_ipv4(block, at::mask);
    const uint32_t gateway = get_ipv4(block, at::gateway);
    if (block.get(at::ip_mode) != ip_static) return address == 0 && mask == 0 && gateway == 0;
    return is_host(address, mask) && is_gateway(gateway, address, mask);
}

bool is_good_wan(const OnuBlock &block)
{
    namespace at = layout::onu_wan;
    const auto mode = block.get(at::mode);
    const auto service = block.get(at::service);
    const auto ip_mode = block.get(at::ip_mode);
    if (mode == wan_removed) return block == OnuBlock(wan_size);
    if (mode > wan_route || (mode == wan_bridge) != (ip_mode == ip_none)) return false;
    return service >= wan_internet && service <= wan_other && ip_mode <= ip_pppoe && is_good_address(block) &&
           block.get(at::priority) <= max_vlan_priority && block.get(at::vlan) <= max_vlan && has_name(block, at::name);
}

uint32_t check_wan(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    if (!is_good_wan(block)) return PON_ERR_BAD_RECORD;
    const bool routes = block.get(layout::onu_wan::mode) == wan_route;
    return routes && !is_gateway_onu(onu) ? PON_ERR_NOT_ABLE : BSP_OK;
}

bool is_good_wlan(const OnuBlock &block)
{
    namespace at = layout::onu_wlan;
    return block.get(at::enabled) <= 1 && block.get(at::channel) <= max_channel &&
           block.get(at::security) <= wlan_wpa3 && block.get(at::hidden) <= 1 && has_name(block, at::name);
}

// Returns whether the address is that of a network with this mask, or both are 0.
bool is_network(uint32_t address, uint32_t mask)
{
    return is_mask(mask) && (address & ~mask) == 0;
}

bool has_good_ports(const OnuBlock &block)
{
    namespace at = layout::onu_acl;
    const auto first = block.get(at::first_port);
    const auto last = block.get(at::last_port);
    const auto protocol = block.get(at::protocol);
    if (first == 0) return last == 0;
    return last >= first && (protocol == ip_tcp || protocol == ip_udp);
}

bool is_good_rule(const OnuBlock &block)
{
    namespace at = layout::onu_acl;
    const auto action = block.get(at::action);
    const auto direction = block.get(at::direction);
    if (action == acl_removed) return block == OnuBlock(acl_size);
    return action <= acl_deny && direction >= acl_upstream && direction <= acl_downstream &&
           is_network(get_ipv4(block, at::source), get_ipv4(block, at::source_mask)) &&
           is_network(get_ipv4(block, at::dest), get_ipv4(block, at::dest_mask)) && has_good_ports(block);
}

bool is_good_dhcp(const OnuBlock &block)
{
    namespace at = layout::onu_dhcp;
    const uint32_t address = get_ipv4(block, at::address);
    const uint32_t mask = get_ipv4(block, at::mask);
    const uint32_t first = get_ipv4(block, at::first);
    const uint32_t last = get_ipv4(block, at::last);
    const auto lease_time = block.get(at::lease_time);
    const auto in_network = [=](uint32_t other) { return is_host(other, mask) && (other & mask) == (address & mask); };
    return block.get(at::enabled) <= 1 && lease_time >= shortest_lease && lease_time <= longest_lease &&
           is_host(address, mask) && in_network(first) && in_network(last) && first <= last &&
           (address < first || address > last);
}

// Checks a setting that only gateways have.
template <bool (*is_good)(const OnuBlock &)>
uint32_t check_of_gateway(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    if (!is_gateway_onu(onu)) return PON_ERR_NOT_ABLE;
    return is_good(block) ? BSP_OK : PON_ERR_BAD_RECORD;
}

constexpr BlockSetting wan{BSP_CMD_VIEW_ONU_WAN, false, wan_size, first_wan, check_wan};
constexpr BlockSetting wlan{BSP_CMD_VIEW_ONU_WLAN, false, wlan_size, first_wlan, check_of_gateway<is_good_wlan>};
constexpr BlockSetting acl{BSP_CMD_VIEW_ONU_ACL, false, acl_size, first_acl_rule, check_of_gateway<is_good_rule>};
constexpr BlockSetting dhcp{BSP_CMD_VIEW_ONU_DHCP, false, dhcp_size, first_dhcp, check_of_gateway<is_good_dhcp>};

// Sets the setting with the number in `onu_arg24`, which is 1 to `last`.
Outcome set_numbered(const Olt &olt, const Request &request, const BlockSetting &setting, uint32_t last)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const uint32_t number = request.read<bsp_onu_msg>().onu_arg24;
    if (number < 1 || number > last) return {PON_ERR_BAD_RECORD};
    return set_setting(olt, request, found.onu, number, setting);
}

Outcome set_wan(const Olt &olt, const Request &request)
{
    return set_numbered(olt, request, wan, max_wans);
}

Outcome set_wlan(const Olt &olt, const Request &request)
{
    return set_numbered(olt, request, wlan, max_wlans);
}

Outcome set_acl(const Olt &olt, const Request &request)
{
    return set_numbered(olt, request, acl, max_acl_rules);
}

Outcome set_dhcp(const Olt &olt, const Request &request)
{
    return set_setting(olt, request, dhcp);
}

Outcome view_wan(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const uint32_t index = request.read<bsp_onu_msg>().onu_arg24;
    if (index > max_wans) return {PON_ERR_BAD_RECORD};
    return {BSP_OK, {}, wan_table(user_services(olt, found.onu), index)};
}

template <std::string (*table)(const UserServices &)>
Outcome view_of_onu(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    return {BSP_OK, {}, table(user_services(olt, found.onu))};
}

template <std::string (*table)(std::span<const UserServices>)>
Outcome view_of_port(const Olt &olt, const Request &request)
{
    const PonPort *port = olt.port(request.read<bsp_pon_msg>().pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    std::vector<UserServices> onus;
    for (const RemoteOnu &onu : onus_of(olt, *port))
        onus.push_back(user_services(olt, onu));
    return {BSP_OK, {}, table(onus)};
}

constexpr Handler handlers[] = {
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_WAN, view_wan, catalogue::Call::get},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_WAN_SET, set_wan, catalogue::Call::set},
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_WLAN, view_of_onu<wlan_table>, catalogue::Call::get},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_WLAN_SET, set_wlan, catalogue::Call::set},
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_CATV, view_of_onu<catv_table>, catalogue::Call::get},
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_VOIP, view_of_onu<voip_table>, catalogue::Call::get},
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_ACL, view_of_onu<acl_table>, catalogue::Call::get},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_ACL_SET, set_acl, catalogue::Call::set},
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_DHCP, view_of_onu<dhcp_table>, catalogue::Call::get},
    {BSP_MSG_ONU_CFG, BSP_CMD_ONU_DHCP_SET, set_dhcp, catalogue::Call::set},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_WLAN_TABLE, view_of_port<wlans_of_port_table>},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_WAN_TABLE, view_of_port<wans_of_port_table>},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_CATV_TABLE, view_of_port<catv_of_port_table>},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_SIP_TABLE, view_of_port<sip_of_port_table>},
};

} // namespace

std::span<const Handler> onu_gateway_handlers()
{
    return handlers;
}

} // namespace ponsim
