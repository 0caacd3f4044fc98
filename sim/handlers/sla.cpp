// Service level agreements.
#include "model/port/sla.h"

#include "generated/service_words.h"
#include "handlers/record.h"
#include "model/olt/bound.h"
#include "views/forwarding.h"

namespace ponsim
{
namespace
{

Outcome sla_set(const Olt &olt, const Request &request)
{
    namespace block = layout::sla;
    const auto record = request.read<bsp_plat_msg>();
    const Sla sla{request.get(block::fixed), request.get(block::assured), request.get(block::maximum),
                  request.get(block::priority), request.get(block::weight)};
    return to_outcome(
        set_sla(olt, record.plat_port, record.plat_arg4, sla == Sla{} ? std::nullopt : std::optional(sla)));
}

Outcome sla_down_set(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_plat_msg>();
    const auto maximum = request.get(layout::sla_down::maximum);
    return to_outcome(
        set_sla_down(olt, record.plat_port, record.plat_arg4, maximum == 0 ? std::nullopt : std::optional(maximum)));
}

Outcome sla_get(const Olt &olt, const Request &request)
{
    namespace block = layout::sla_of_onu;
    const auto record = request.read<bsp_plat_msg>();
    if (const uint32_t status = find_bound(olt, record.plat_port, record.plat_arg4, {}).status) return {status};
    const Sla sla = olt.port(record.plat_port)->bindings[record.plat_arg4]->sla.value_or(default_sla);
    Answer answer(head_of(record));
    answer.put(block::fixed, sla.fixed);
    answer.put(block::assured, sla.assured);
    answer.put(block::maximum, sla.maximum);
    answer.put(block::priority, sla.priority);
    answer.put(block::weight, sla.weight);
    return answer.outcome();
}

Outcome sla_down_get(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_plat_msg>();
    if (const uint32_t status = find_bound(olt, record.plat_port, record.plat_arg4, {}).status) return {status};
    const std::optional<uint32_t> stored = olt.port(record.plat_port)->bindings[record.plat_arg4]->sla_down;
    Answer answer(head_of(record));
    answer.put(layout::sla_down_of_onu::maximum, stored.value_or(line_rate));
    return answer.outcome();
}

Outcome sla_port_get(const Olt &olt, const Request &request)
{
    namespace block = layout::sla_of_port;
    const auto record = request.read<bsp_plat_msg>();
    const PonPort *port = olt.port(record.plat_port);
    if (!port) return {PON_ERR_NO_PORT};
    const Granted granted = granted_at(olt, *port);
    Answer answer(head_of(record));
    answer.put(block::onus, granted.onus);
    answer.put(block::fixed, granted.fixed);
    answer.put(block::assured, granted.assured);
    answer.put(block::capacity, granted.capacity);
    answer.put(block::free, granted.free());
    return answer.outcome();
}

// The table of one port.
Outcome shown(const Olt &olt, const Request &request, std::string (*table)(const PonPort &))
{
    const PonPort *port = olt.port(request.read<bsp_plat_msg>().plat_port);
    if (!port) return {PON_ERR_NO_PORT};
    return {BSP_OK, {}, table(*port)};
}

Outcome sla_web(const Olt &olt, const Request &request)
{
    return shown(olt, request, sla_table);
}

Outcome sla_down_web(const Olt &olt, const Request &request)
{
    return shown(olt, request, sla_down_table);
}

Outcome sla_snmp(const Olt &olt, const Request &)
{
    return {BSP_OK, {}, sla_summary_table(olt)};
}

constexpr Handler handlers[] = {
    {BSP_MSG_PLAT, BSP_CMD_SLA_SET, sla_set},
    {BSP_MSG_PLAT, BSP_CMD_SLA_GET, sla_get},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_SLA_GET, sla_get},
    {BSP_MSG_PLAT, BSP_CMD_SLA_PORT_GET, sla_port_get},
    {BSP_MSG_PLAT, BSP_CMD_VIEW_SLA_WEB, sla_web},
    {BSP_MSG_PLAT, BSP_CMD_VIEW_SLA_SNMP, sla_snmp},
    {BSP_MSG_PLAT, BSP_CMD_SLA_DOWN_SET, sla_down_set},
    {BSP_MSG_PLAT, BSP_CMD_SLA_DOWN_GET, sla_down_get},
    {BSP_MSG_PLAT, BSP_CMD_VIEW_SLA_DOWN_WEB, sla_down_web},
};

} // namespace

std::span<const Handler> sla_handlers()
{
    return handlers;
}

} // namespace ponsim
