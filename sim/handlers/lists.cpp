// These commands concern the whitelist and the blacklist.
#include "generated/service_words.h"
#include "handlers/record.h"
#include "model/lifecycle/admission.h"
#include "model/lifecycle/blacklist.h"
#include "model/olt/bound.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

Outcome add_auto(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    std::string text;
    if (!get_text(request.get(layout::blacklist_text::text), text)) return {PON_ERR_BAD_RECORD};
    return to_outcome(add_to_blacklist(olt, record.pon_port, mac_of(record), text));
}

Outcome reject_one(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    return to_outcome(reject_onu(olt, record.pon_port, record.onu_id));
}

Outcome reject_batch(const Olt &olt, const Request &request)
{
    const OnuIds onu_ids = id_set(request, layout::onu_batch::onu_set);
    return to_outcome(reject_onus(olt, request.read<bsp_pon_msg>().pon_port, onu_ids));
}

Outcome remove_one(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    return to_outcome(remove_from_blacklist(olt, record.pon_port, mac_of(record)));
}

Outcome remove_batch(const Olt &olt, const Request &request)
{
    const OnuIds ids = id_set(request, layout::blacklist_batch::id_set);
    return to_outcome(remove_from_blacklist(olt, request.read<bsp_pon_msg>().pon_port, ids));
}

Outcome whitelist_get(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    const Named onu = find_bound(olt, record.pon_port, record.onu_id, mac_of(record));
    if (onu.status != BSP_OK) return {onu.status};
    const PonPort &port = *olt.port(record.pon_port);
    const Binding &binding = *port.bindings[onu.onu_id];
    const OnuRecord kept = port.record(binding.mac);
    const OnuState state = port.state(binding);

    bsp_pon_msg common{};
    common.cmd = record.cmd;
    common.pon_port = record.pon_port;
    common.onu_id = onu.onu_id;
    common.arg_value = binding.mode;
    std::ranges::copy(binding.mac, common.onu_mac);
    binding.text_a.copy(common.text237, sizeof common.text237);
    binding.text_b.copy(common.text173, sizeof common.text173);
    binding.text_c.copy(common.text365, sizeof common.text365);
    Answer answer(common);
    namespace entry = layout::whitelist_entry;
    answer.put(entry::state, state);
    answer.put(entry::authenticated, state == OnuState::online);
    answer.put(entry::exempt, binding.exempt);
    answer.put(entry::supported, kept.supported);
    answer.put(entry::reboots, kept.reboots);
    answer.put(entry::description, binding.description);
    if (state != OnuState::offline) {
        const Arrival &arrival = *port.ranged(binding.mac);
        answer.put(entry::distance, arrival.distance);
        answer.put(entry::loid, arrival.loid);
    }
    return answer.outcome();
}

template <class Entries>
Outcome id_usage(const Olt &olt, const Request &request, const Entries PonPort::*entries)
{
    bsp_pon_msg common{};
    common.cmd = request.read<bsp_pon_msg>().cmd;
    common.pon_port = request.read<bsp_pon_msg>().pon_port;
    const PonPort *port = olt.port(common.pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    const OnuIds ids = ids_of(port->*entries);
    Answer answer(common);
    answer.put(layout::id_usage::id_set, ids);
    answer.put(layout::id_usage::count, ids.count());
    return answer.outcome();
}

Outcome whitelist_ids(const Olt &olt, const Request &request)
{
    return id_usage(olt, request, &PonPort::bindings);
}

Outcome blacklist_ids(const Olt &olt, const Request &request)
{
    return id_usage(olt, request, &PonPort::blacklist);
}

void add_entry(Table<view::blacklist> &table, const PonPort &port, uint32_t id)
{
    const BlacklistEntry &entry = *port.blacklist[id];
    table.add({.pon_port = port.number,
               .id = id,
               .mac = entry.mac,
               .text = entry.text,
               .registering = port.ranged(entry.mac) != nullptr});
}

Outcome blacklist(const Selection &selection)
{
    if (selection.status != BSP_OK) return {selection.status};
    Table<view::blacklist> table;
    bool found = false;
    for (const PonPort &port : selection.ports)
        for (uint32_t id = 0; id < onus_per_port; ++id) {
            if (!port.blacklist[id]) continue;
            if (selection.id != 0 && selection.id != id) continue;
            if (!is_zero(selection.mac) && selection.mac != port.blacklist[id]->mac) continue;
            add_entry(table, port, id);
            found = true;
        }
    return {selection.narrowed() && !found ? PON_ERR_NOT_LISTED : BSP_OK, {}, table.text()};
}

Outcome blacklist_get(const Olt &olt, const Request &request)
{
    return blacklist(selection_of(olt, request));
}

Outcome blacklist_snmp(const Olt &olt, const Request &)
{
    return blacklist({BSP_OK, olt.ports(), 0, {}});
}

Outcome blacklist_web(const Olt &olt, const Request &request)
{
    return blacklist(port_selection_of(olt, request));
}

constexpr Handler handlers[] = {
    {BSP_MSG_PON, BSP_CMD_BLACKLIST_ADD_AUTO, add_auto},
    {BSP_MSG_PON, BSP_CMD_BLACKLIST_REJECT, reject_one},
    {BSP_MSG_PON, BSP_CMD_BLACKLIST_REJECT_BATCH, reject_batch},
    {BSP_MSG_PON, BSP_CMD_BLACKLIST_REMOVE, remove_one},
    {BSP_MSG_PON, BSP_CMD_BLACKLIST_REMOVE_BATCH, remove_batch},
    {BSP_MSG_PON, BSP_CMD_WHITELIST_GET, whitelist_get, catalogue::Call::get},
    {BSP_MSG_PON, BSP_CMD_WHITELIST_IDS, whitelist_ids},
    {BSP_MSG_PON, BSP_CMD_BLACKLIST_GET, blacklist_get},
    {BSP_MSG_PON, BSP_CMD_VIEW_BLACKLIST_SNMP, blacklist_snmp},
    {BSP_MSG_PON, BSP_CMD_VIEW_BLACKLIST_WEB, blacklist_web},
    {BSP_MSG_PON, BSP_CMD_BLACKLIST_IDS, blacklist_ids},
};

} // namespace

std::span<const Handler> list_handlers()
{
    return handlers;
}

} // namespace ponsim
