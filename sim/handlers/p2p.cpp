// These commands concern P2P forwarding.
#include "model/port/p2p.h"

#include <cstddef>
#include <stdexcept>

#include "generated/service_words.h"
#include "handlers/record.h"
#include "views/forwarding.h"

namespace ponsim
{
namespace
{

Outcome state_set(const Olt &olt, const Request &request)
{
    namespace words = layout::p2p_switch;
    return to_outcome(set_p2p(olt, request.get(words::port), request.get(words::onu), request.get(words::on)));
}

Outcome own_port_set(const Olt &olt, const Request &request)
{
    const auto own_port = request.get(layout::p2p_own_port::own_port);
    return to_outcome(set_p2p_own_port(olt, request.read<bsp_plat_msg>().plat_port, own_port));
}

Outcome config_set(const Olt &olt, const Request &request)
{
    namespace block = layout::p2p_config;
    const auto record = request.read<bsp_plat_msg>();
    return to_outcome(set_p2p_config(olt, record.plat_port,
                                     {.rest = record.plat_arg108,
                                      .rate = request.get(block::rate),
                                      .first_vlan = request.get(block::first_vlan),
                                      .last_vlan = request.get(block::last_vlan),
                                      .broadcast = request.get(block::broadcast),
                                      .multicast = request.get(block::multicast)}));
}

Outcome entry_set(const Olt &olt, const Request &request)
{
    namespace block = layout::p2p_entry;
    const auto record = request.read<bsp_plat_msg>();
    return to_outcome(set_p2p_entry(olt, record.plat_port, record.plat_arg104,
                                    {.traffic = record.plat_arg108,
                                     .action = P2pAction{request.get(block::action)},
                                     .from_onu = request.get(block::from_onu),
                                     .to_port = request.get(block::to_port),
                                     .to_onu = request.get(block::to_onu),
                                     .rate = request.get(block::rate)}));
}

using Entries = std::array<std::optional<P2pEntry>, max_p2p_entries>;

Entries entries_of(const Olt &olt, uint32_t pon_port)
{
    Entries entries;
    for (uint32_t number = 0; number < max_p2p_entries; ++number)
        entries[number] = p2p_entry(olt, pon_port, number);
    return entries;
}

Outcome own_port_get(const Olt &olt, const Request &request)
{
    namespace block = layout::p2p_of_port;
    const auto record = request.read<bsp_plat_msg>();
    const PonPort *port = olt.port(record.plat_port);
    if (!port) return {PON_ERR_NO_PORT};
    const P2pConfig config = p2p_config(olt, port->number);
    OnuIds ids;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        ids[onu_id] = port->bindings[onu_id] && port->bindings[onu_id]->p2p;
    Answer answer(head_of(record));
    answer.put(block::on, p2p_on(olt, port->number));
    answer.put(block::rest, config.rest);
    answer.put(block::own_port, p2p_own_port(olt, port->number));
    answer.put(block::rate, config.rate);
    answer.put(block::first_vlan, config.first_vlan);
    answer.put(block::last_vlan, config.last_vlan);
    answer.put(block::broadcast, config.broadcast);
    answer.put(block::multicast, config.multicast);
    answer.put(block::onu_set, ids);
    Outcome outcome = answer.outcome();
    outcome.result = p2p_entries_table(entries_of(olt, port->number));
    return outcome;
}

Outcome state_get(const Olt &olt, const Request &request)
{
    std::vector<P2pState> ports;
    for (const PonPort &port : olt.ports()) {
        uint32_t entries = 0;
        for (const std::optional<P2pEntry> &entry : entries_of(olt, port.number))
            entries += entry.has_value();
        ports.push_back(
            {port.number, p2p_on(olt, port.number), p2p_own_port(olt, port.number), p2p_onus(olt, port), entries});
    }
    const std::string table = p2p_table(ports);
    if (table.size() > max_text) throw std::logic_error("a table is too long for the answer");
    Answer answer(head_of(request.read<bsp_plat_msg>()));
    answer.put(layout::At<layout::Text<max_text + 1>>{offsetof(bsp_plat_msg, plat_data)}, table);
    Outcome outcome = answer.outcome();
    outcome.result = table;
    return outcome;
}

constexpr Handler handlers[] = {
    {BSP_MSG_PLAT, BSP_CMD_P2P_STATE_SET, state_set},       {BSP_MSG_PLAT, BSP_CMD_P2P_OWN_PORT_SET, own_port_set},
    {BSP_MSG_PLAT, BSP_CMD_P2P_OWN_PORT_GET, own_port_get}, {BSP_MSG_PLAT, BSP_CMD_P2P_STATE_GET, state_get},
    {BSP_MSG_PLAT, BSP_CMD_P2P_ENTRY_SET, entry_set},       {BSP_MSG_PLAT, BSP_CMD_P2P_CFG_SET, config_set},
};

} // namespace

std::span<const Handler> p2p_handlers()
{
    return handlers;
}

} // namespace ponsim
