// These commands return views of what ONUs are and of their UNI ports.
#include "views/devices.h"
#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/olt/uni_config.h"
#include "views/kept_rows.h"

namespace ponsim
{
namespace
{

BoundOnu bound_onu(const Olt &olt, const RemoteOnu &onu)
{
    return {onu.port->number,   onu.onu_id, onu.binding, onu.state, onu.device, uni_configs(olt, onu, Side::local),
            uni_links(olt, onu)};
}

std::vector<BoundOnu> bound_onus(const Olt &olt, const PonPort &port)
{
    std::vector<BoundOnu> onus;
    for (const RemoteOnu &onu : onus_of(olt, port))
        onus.push_back(bound_onu(olt, onu));
    return onus;
}

Outcome shown(std::string &&table)
{
    return {BSP_OK, {}, std::move(table)};
}

// Shows the bound ONUs of ports, whose rows are kept by port.
Outcome shown_by_port(const Olt &olt, std::span<const PonPort> ports, RowsOf kind, const Request &request,
                      std::string (*table)(std::span<const BoundOnu>))
{
    return shown(table_of_ports(olt, ports, {kind}, request.rows, [&](RowsOf) {
        return [&olt, kind, table](const PonPort &port) {
            std::vector<BoundOnu> onus = bound_onus(olt, port);
            if (kind == RowsOf::upgrades)
                for (BoundOnu &onu : onus)
                    onu.upgrade = upgrade_progress(olt, port, onu.binding->mac);
            return table(onus);
        };
    }));
}

Outcome capabilities(const Olt &olt, const Request &request)
{
    return shown_by_port(olt, olt.ports(), RowsOf::capabilities, request, capabilities_table);
}

Outcome upgrade_base_info(const Olt &olt, const Request &request)
{
    const Selection selection = port_selection_of(olt, request);
    if (selection.status != BSP_OK) return {selection.status};
    return shown_by_port(olt, selection.ports, RowsOf::upgrades, request, upgrade_table);
}

Outcome uni_attributes(const Olt &olt, const Request &request)
{
    return shown_by_port(olt, olt.ports(), RowsOf::uni_attributes, request, uni_attributes_table);
}

// The library drops the status word of this command. So for an ONU that cannot be shown the answer must read as a table
// without rows.
Outcome onu_config(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request, false);
    Outcome outcome{found.status};
    std::vector<BoundOnu> onus;
    if (outcome.status == BSP_OK) onus = {bound_onu(olt, found.onu)};
    const std::string table = onu_config_table(onus);
    outcome.answer = text_answer(request.read<bsp_onu_msg>().onu_cmd, table);
    if (outcome.status == BSP_OK) outcome.result = table;
    return outcome;
}

Outcome uni_config(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    const BoundOnu onu = bound_onu(olt, found.onu);
    return shown(uni_config_table({&onu, 1}));
}

std::vector<UniGroup> groups_of_ports(const Olt &olt)
{
    std::vector<UniGroup> groups;
    for (const PonPort &port : olt.ports()) {
        UniGroup group{port.number, {}, {}, {}};
        for (const BoundOnu &onu : bound_onus(olt, port))
            group.configs.insert(group.configs.end(), onu.configs.begin(), onu.configs.end());
        groups.push_back(std::move(group));
    }
    return groups;
}

std::vector<UniGroup> groups_of_onus(const Olt &olt, const PonPort &port)
{
    std::vector<UniGroup> groups;
    for (const BoundOnu &onu : bound_onus(olt, port))
        groups.push_back({onu.pon_port, onu.onu_id, {}, onu.configs});
    return groups;
}

std::vector<UniGroup> groups_of_unis(const BoundOnu &onu)
{
    std::vector<UniGroup> groups;
    for (uint32_t index = 0; index < onu.configs.size(); ++index)
        groups.push_back({onu.pon_port, onu.onu_id, index + 1, {onu.configs[index]}});
    return groups;
}

enum Scope : uint32_t { whole_port = 0, one_onu = 1 };

Outcome vlan_view(const Olt &olt, const Request &request, std::string (*table)(std::span<const UniGroup>))
{
    const auto record = request.read<bsp_onu_msg>();
    const auto scope = request.get(layout::vlan_view::scope);
    if (scope > one_onu) return {PON_ERR_BAD_RECORD};
    if (scope == one_onu) {
        const FoundOnu found = onu_of(olt, request, false);
        if (found.status != BSP_OK) return {found.status};
        return shown(table(groups_of_unis(bound_onu(olt, found.onu))));
    }
    if (record.onu_pon_port == 0) return shown(table(groups_of_ports(olt)));
    const PonPort *port = olt.port(record.onu_pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    return shown(table(groups_of_onus(olt, *port)));
}

Outcome vlan_modes(const Olt &olt, const Request &request)
{
    return vlan_view(olt, request, vlan_modes_table);
}

Outcome vlan_lists(const Olt &olt, const Request &request)
{
    return vlan_view(olt, request, vlan_lists_table);
}

constexpr Handler handlers[] = {
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_CAP_SNMP, capabilities},
    {BSP_MSG_PON, BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, upgrade_base_info},
    {BSP_MSG_PON, BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP, uni_attributes},
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_CONFIG, onu_config},
    {BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_PORT_CONFIG, uni_config},
    {BSP_MSG_ONU_SNMP, BSP_CMD_VIEW_VLAN_MODE_SNMP, vlan_modes},
    {BSP_MSG_ONU_SNMP, BSP_CMD_VIEW_VLAN_LIST_SNMP, vlan_lists},
};

} // namespace

std::span<const Handler> device_handlers()
{
    return handlers;
}

} // namespace ponsim
