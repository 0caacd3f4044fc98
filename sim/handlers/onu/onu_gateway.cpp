// These commands concern what ONUs do for their users: WAN connections, WLAN, CATV, voice, ACL and DHCP.
#include <cstddef>

#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/onu/gateway.h"
#include "views/gateway.h"

namespace ponsim
{
namespace
{

uint32_t check_wan(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    if (!is_good_wan(block)) return PON_ERR_BAD_RECORD;
    const bool routes = block.get(layout::onu_wan::mode) == wan_route;
    return routes && !is_gateway_onu(onu) ? PON_ERR_NOT_ABLE : BSP_OK;
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
constexpr BlockSetting acl{BSP_CMD_VIEW_ONU_ACL, false, acl_size, first_acl_rule, check_of_gateway<is_good_acl_rule>};
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
