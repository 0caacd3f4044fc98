#include "views/forwarding.h"

#include "model/port/sla.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

// Returns no value when the value is `none`.
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
    Table<view::slas> table;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
        if (!port.bindings[onu_id]) continue;
        const std::optional<Sla> &sla = port.bindings[onu_id]->sla;
        const auto part = [&sla](uint32_t Sla::*member) { return sla ? std::optional((*sla).*member) : std::nullopt; };
        table.add({.onu_id = onu_id,
                   .fixed = part(&Sla::fixed),
                   .assured = part(&Sla::assured),
                   .max = part(&Sla::maximum),
                   .prio = part(&Sla::priority),
                   .wt = part(&Sla::weight)});
    }
    return table.text();
}

std::string sla_down_table(const PonPort &port)
{
    Table<view::slas_down> table;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        if (port.bindings[onu_id]) table.add({.onu_id = onu_id, .max = port.bindings[onu_id]->sla_down});
    return table.text();
}

std::string sla_summary_table(const Olt &olt)
{
    Table<view::slas_of_ports> table;
    for (const PonPort &port : olt.ports()) {
        uint32_t bound = 0;
        uint32_t down = 0;
        for (const std::optional<Binding> &binding : port.bindings) {
            bound += binding.has_value();
            down += binding && binding->sla_down;
        }
        const Granted granted = granted_at(olt, port);
        table.add({.pon_port = port.number,
                   .bound = bound,
                   .slas = granted.onus,
                   .down = down,
                   .fixed = granted.fixed,
                   .assured = granted.assured,
                   .capacity = granted.capacity,
                   .free = granted.free()});
    }
    return table.text();
}

std::string p2p_table(std::span<const P2pState> ports)
{
    Table<view::p2p> table;
    for (const P2pState &port : ports)
        table.add({.pon_port = port.pon_port,
                   .on = port.on,
                   .own = unless(port.own_port, 0),
                   .onus = port.onus,
                   .entries = port.entries});
    return table.text();
}

std::string p2p_entries_table(std::span<const std::optional<P2pEntry>> entries)
{
    Table<view::p2p_entries> table;
    for (uint32_t number = 0; number < entries.size(); ++number) {
        const std::optional<P2pEntry> &entry = entries[number];
        if (!entry) continue;
        table.add({.entry = number,
                   .traffic = unless(entry->traffic, 0),
                   .action = entry->action == P2pAction::forward ? "forward" : "drop",
                   .from_onu = unless(entry->from_onu, any_onu),
                   .to_port = entry->to_port,
                   .to_onu = unless(entry->to_onu, any_onu),
                   .rate = unless(entry->rate, 0)});
    }
    return table.text();
}

std::string mac_table(std::span<const FdbEntry> entries, ModelTime now)
{
    Table<view::mac_table> table;
    for (const FdbEntry &entry : entries)
        table.add({.pon_port = entry.port,
                   .onu_id = entry.onu_id.value(),
                   .uni = entry.uni,
                   .vlan = entry.vlan,
                   .mac = entry.mac,
                   .age = age(entry, now)});
    return table.text();
}

std::string network_mac_table(std::span<const FdbEntry> entries, ModelTime now)
{
    Table<view::mac_table_nni> table;
    for (const FdbEntry &entry : entries)
        table.add({.uplink = entry.port, .vlan = entry.vlan, .mac = entry.mac, .age = age(entry, now)});
    return table.text();
}

} // namespace ponsim
