#include "views/forwarding.h"

#include "bsp_pon.h"
#include "model/olt/sla.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

// Where `none` stands for none.
std::optional<uint32_t> unless(uint32_t value, uint32_t none)
{
    return value == none ? std::nullopt : std::optional(value);
}

uint32_t age(const FdbEntry &entry, ModelTime now)
{
    return static_cast<uint32_t>((now - entry.seen) / ms_per_second);
}

} // namespace

std::string sla_table(const PonPort &port)
{
    Table table(BSP_MSG_PLAT, BSP_CMD_VIEW_SLA_WEB);
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
        if (!port.bindings[onu_id]) continue;
        const std::optional<Sla> &sla = port.bindings[onu_id]->sla;
        const auto cell = [&](std::string_view name, uint32_t Sla::*member) {
            sla ? table.cell(name, (*sla).*member) : table.cell(name, std::nullopt);
        };
        table.cell("onu_id", onu_id);
        cell("fixed", &Sla::fixed);
        cell("assured", &Sla::assured);
        cell("max", &Sla::maximum);
        cell("prio", &Sla::priority);
        cell("wt", &Sla::weight);
    }
    return std::string(table.text());
}

std::string sla_down_table(const PonPort &port)
{
    Table table(BSP_MSG_PLAT, BSP_CMD_VIEW_SLA_DOWN_WEB);
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
        if (!port.bindings[onu_id]) continue;
        table.cell("onu_id", onu_id);
        table.cell("max", port.bindings[onu_id]->sla_down);
    }
    return std::string(table.text());
}

std::string sla_summary_table(std::span<const PonPort> ports)
{
    Table table(BSP_MSG_PLAT, BSP_CMD_VIEW_SLA_SNMP);
    for (const PonPort &port : ports) {
        uint32_t bound = 0;
        uint32_t down = 0;
        for (const std::optional<Binding> &binding : port.bindings) {
            bound += binding.has_value();
            down += binding && binding->sla_down;
        }
        const Granted granted = granted_at(port);
        table.cell("pon_port", port.number);
        table.cell("bound", bound);
        table.cell("slas", granted.onus);
        table.cell("down", down);
        table.cell("fixed", granted.fixed);
        table.cell("assured", granted.assured);
        table.cell("capacity", line_rate);
        table.cell("free", granted.free());
    }
    return std::string(table.text());
}

std::string p2p_table(std::span<const P2pState> ports)
{
    Table table(BSP_MSG_PLAT, BSP_CMD_P2P_STATE_GET);
    for (const P2pState &port : ports) {
        table.cell("pon_port", port.pon_port);
        table.cell("on", port.on);
        table.cell("own", unless(port.own_port, 0));
        table.cell("onus", port.onus);
        table.cell("entries", port.entries);
    }
    return std::string(table.text());
}

std::string p2p_entries_table(std::span<const std::optional<P2pEntry>> entries)
{
    Table table(BSP_MSG_PLAT, BSP_CMD_P2P_OWN_PORT_GET);
    for (uint32_t number = 0; number < entries.size(); ++number) {
        const std::optional<P2pEntry> &entry = entries[number];
        if (!entry) continue;
        table.cell("entry", number);
        table.cell("traffic", unless(entry->traffic, 0));
        table.cell("action", std::string_view(entry->action == P2pAction::forward ? "forward" : "drop"));
        table.cell("from_onu", unless(entry->from_onu, any_onu));
        table.cell("to_port", entry->to_port);
        table.cell("to_onu", unless(entry->to_onu, any_onu));
        table.cell("rate", unless(entry->rate, 0));
    }
    return std::string(table.text());
}

std::string mac_table(std::span<const FdbEntry> entries, ModelTime now)
{
    Table table(BSP_MSG_PLAT, BSP_CMD_MAC_GET);
    for (const FdbEntry &entry : entries) {
        table.cell("pon_port", entry.port);
        table.cell("onu_id", entry.onu_id);
        table.cell("uni", entry.uni);
        table.cell("vlan", entry.vlan);
        table.cell("mac", entry.mac);
        table.cell("age", age(entry, now));
    }
    return std::string(table.text());
}

std::string network_mac_table(std::span<const FdbEntry> entries, ModelTime now)
{
    Table table(BSP_MSG_PLAT, BSP_CMD_MAC_NNI_GET);
    for (const FdbEntry &entry : entries) {
        table.cell("uplink", entry.port);
        table.cell("vlan", entry.vlan);
        table.cell("mac", entry.mac);
        table.cell("age", age(entry, now));
    }
    return std::string(table.text());
}

} // namespace ponsim
