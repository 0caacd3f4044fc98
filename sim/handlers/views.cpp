// Views of ONUs and of the OLT.
#include "bsp_pon.h"
#include "generated/service_words.h"
#include "handlers/record.h"
#include "views/kept_rows.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

using OnuInfo = Table<view::onu_info>;

void add_bound(OnuInfo &table, const PonPort &port, uint32_t onu_id, const Binding &binding, bool with_texts)
{
    const OnuState state = port.state(binding);
    const Arrival *arrival = state == OnuState::offline ? nullptr : port.ranged(binding.mac);
    const OnuRecord record = port.record(binding.mac);
    const auto text = [with_texts](std::string_view value) { return with_texts ? std::optional(value) : std::nullopt; };
    table.add({.pon_port = port.number,
               .onu_id = onu_id,
               .mac = binding.mac,
               .state = to_text(state),
               .supported = record.supported,
               .distance = arrival ? std::optional(arrival->distance) : std::nullopt,
               .mode = binding.mode,
               .text_a = text(binding.text_a),
               .text_b = text(binding.text_b),
               .text_c = text(binding.text_c),
               .reboots = record.reboots,
               .description = text(binding.description),
               .loid = arrival ? std::optional<std::string_view>(arrival->loid) : std::nullopt});
}

void add_waiting(OnuInfo &table, const PonPort &port, const Arrival &arrival)
{
    const OnuRecord record = port.record(arrival.mac);
    table.add({.pon_port = port.number,
               .onu_id = std::nullopt,
               .mac = arrival.mac,
               .state = "waiting",
               .supported = record.supported,
               .distance = arrival.distance,
               .mode = std::nullopt,
               .text_a = std::nullopt,
               .text_b = std::nullopt,
               .text_c = std::nullopt,
               .reboots = record.reboots,
               .description = std::nullopt,
               .loid = arrival.loid});
}

std::string bound_of_port(const PonPort &port, bool with_texts)
{
    OnuInfo table;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        if (port.bindings[onu_id]) add_bound(table, port, onu_id, *port.bindings[onu_id], with_texts);
    return table.text();
}

std::string waiting_of_port(const Olt &olt, const PonPort &port)
{
    OnuInfo table;
    for (const Arrival *arrival : olt.waiting(port))
        add_waiting(table, port, *arrival);
    return table.text();
}

// The table of whole ports: those that are bound, and behind them those that wait.
std::string all_onus(const Olt &olt, std::span<const PonPort> ports, bool with_texts, KeptRows *kept)
{
    const RowsOf bound = with_texts ? RowsOf::bound : RowsOf::bound_without_texts;
    return table_of_ports(olt, ports, {bound, RowsOf::waiting}, kept, [&](RowsOf kind) {
        return [&olt, kind, with_texts](const PonPort &port) {
            return kind == RowsOf::waiting ? waiting_of_port(olt, port) : bound_of_port(port, with_texts);
        };
    });
}

// The ids of the bound ONUs that are selected.
std::vector<uint32_t> bound_ids(const Olt &olt, const PonPort &port, const Selection &selection)
{
    std::vector<uint32_t> ids;
    if (is_zero(selection.mac)) {
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
            if (port.bindings[onu_id] && (selection.id == 0 || selection.id == onu_id)) ids.push_back(onu_id);
    } else if (const std::optional<uint32_t> onu_id = olt.id_at(port.number, selection.mac)) {
        if (selection.id == 0 || selection.id == *onu_id) ids.push_back(*onu_id);
    }
    return ids;
}

// Those that wait and are selected. They have no id yet.
std::vector<const Arrival *> waiting_onus(const Olt &olt, const PonPort &port, const Selection &selection)
{
    if (selection.id != 0) return {};
    const Arrival *arrival = port.ranged(selection.mac);
    if (!arrival || !olt.waits(port, *arrival)) return {};
    return {arrival};
}

Outcome onu_info(const Olt &olt, const Selection &selection, bool with_texts, KeptRows *kept)
{
    if (!selection.narrowed()) return {BSP_OK, {}, all_onus(olt, selection.ports, with_texts, kept)};
    OnuInfo table;
    bool found = false;
    for (const PonPort &port : selection.ports)
        for (uint32_t onu_id : bound_ids(olt, port, selection)) {
            add_bound(table, port, onu_id, *port.bindings[onu_id], with_texts);
            found = true;
        }
    for (const PonPort &port : selection.ports)
        for (const Arrival *arrival : waiting_onus(olt, port, selection)) {
            add_waiting(table, port, *arrival);
            found = true;
        }
    return {found ? BSP_OK : PON_ERR_NOT_BOUND, {}, table.text()};
}

Outcome onu_info(const Olt &olt, const Selection &selection, KeptRows *kept)
{
    if (selection.status != BSP_OK) return {selection.status};
    Outcome outcome = onu_info(olt, selection, true, kept);
    if (outcome.result->size() > max_result) outcome = onu_info(olt, selection, false, kept);
    return outcome;
}

Outcome onu_info_get(const Olt &olt, const Request &request)
{
    return onu_info(olt, selection_of(olt, request), request.rows);
}

Outcome onu_info_snmp(const Olt &olt, const Request &request)
{
    return onu_info(olt, {BSP_OK, olt.ports(), 0, {}}, request.rows);
}

Outcome onu_info_web(const Olt &olt, const Request &request)
{
    return onu_info(olt, port_selection_of(olt, request), request.rows);
}

Outcome base_info_web(const Olt &olt, const Request &request)
{
    const Selection selection = port_selection_of(olt, request);
    if (selection.status != BSP_OK) return {selection.status};
    Table<view::base_info> table;
    for (const PonPort &port : selection.ports) {
        uint32_t bound = 0;
        uint32_t online = 0;
        for (const std::optional<Binding> &binding : port.bindings) {
            bound += binding.has_value();
            online += binding && port.online(*binding);
        }
        table.add({.pon_port = port.number,
                   .bound = bound,
                   .online = online,
                   .waiting = static_cast<uint32_t>(olt.waiting(port).size()),
                   .min_distance = port.limits.min,
                   .max_distance = port.limits.max});
    }
    return {BSP_OK, {}, table.text()};
}

constexpr Handler handlers[] = {
    {BSP_MSG_PON, BSP_CMD_ONU_INFO_GET, onu_info_get, catalogue::Call::dgram_get},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_INFO_SNMP, onu_info_snmp},
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_INFO_WEB, onu_info_web},
    {BSP_MSG_PON, BSP_CMD_VIEW_BASE_INFO_WEB, base_info_web},
};

} // namespace

std::span<const Handler> view_handlers()
{
    return handlers;
}

} // namespace ponsim
