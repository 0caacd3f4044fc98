// Views of ONUs and of the OLT.
#include "bsp_pon.h"
#include "generated/service_words.h"
#include "handlers/handler.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

Table table_for(uint32_t command)
{
    return Table{BSP_MSG_PON, command};
}

Outcome finish(Table &table)
{
    return {BSP_OK, {}, std::string(table.text())};
}

void add_bound(Table &table, const PonPort &port, uint32_t onu_id, const Binding &binding, bool with_texts)
{
    const bool online = port.online(binding);
    const OnuRecord record = port.record(binding.mac);
    const auto text = [&](std::string_view name, const std::string &value) {
        with_texts ? table.cell(name, std::string_view(value)) : table.cell(name, std::nullopt);
    };
    table.cell("pon_port", port.number);
    table.cell("onu_id", onu_id);
    table.cell("mac", binding.mac);
    table.cell("state", std::string_view(online ? "online" : "offline"));
    table.cell("supported", record.supported);
    online ? table.cell("distance", port.ranged(binding.mac)->distance) : table.cell("distance", std::nullopt);
    table.cell("mode", binding.mode);
    text("text_a", binding.text_a);
    text("text_b", binding.text_b);
    text("text_c", binding.text_c);
    table.cell("reboots", record.reboots);
}

void add_waiting(Table &table, const PonPort &port, const Arrival &arrival)
{
    const OnuRecord record = port.record(arrival.mac);
    table.cell("pon_port", port.number);
    table.cell("onu_id", std::nullopt);
    table.cell("mac", arrival.mac);
    table.cell("state", std::string_view("waiting"));
    table.cell("supported", record.supported);
    table.cell("distance", arrival.distance);
    for (const char *name : {"mode", "text_a", "text_b", "text_c"})
        table.cell(name, std::nullopt);
    table.cell("reboots", record.reboots);
}

Outcome onu_info(const Olt &olt, uint32_t command, std::span<const PonPort> ports, bool with_texts)
{
    Table table = table_for(command);
    for (const PonPort &port : ports)
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
            if (port.bindings[onu_id]) add_bound(table, port, onu_id, *port.bindings[onu_id], with_texts);
    for (const PonPort &port : ports)
        for (const Arrival *arrival : olt.waiting(port))
            add_waiting(table, port, *arrival);
    return finish(table);
}

Outcome onu_info(const Olt &olt, uint32_t command, std::span<const PonPort> ports)
{
    Outcome outcome = onu_info(olt, command, ports, true);
    if (outcome.result->size() > max_result) outcome = onu_info(olt, command, ports, false);
    return outcome;
}

Outcome onu_info_snmp(const Olt &olt, const Request &)
{
    return onu_info(olt, BSP_CMD_VIEW_ONU_INFO_SNMP, olt.ports());
}

Outcome onu_info_web(const Olt &olt, const Request &request)
{
    const uint32_t pon_port = request.read<bsp_pon_msg>().pon_port;
    if (pon_port == 0) return onu_info(olt, BSP_CMD_VIEW_ONU_INFO_WEB, olt.ports());
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    return onu_info(olt, BSP_CMD_VIEW_ONU_INFO_WEB, {port, 1});
}

Outcome base_info_web(const Olt &olt, const Request &)
{
    Table table = table_for(BSP_CMD_VIEW_BASE_INFO_WEB);
    for (const PonPort &port : olt.ports()) {
        uint32_t bound = 0;
        uint32_t online = 0;
        for (const std::optional<Binding> &binding : port.bindings) {
            bound += binding.has_value();
            online += binding && port.online(*binding);
        }
        table.cell("pon_port", port.number);
        table.cell("bound", bound);
        table.cell("online", online);
        table.cell("waiting", static_cast<uint32_t>(olt.waiting(port).size()));
        table.cell("min_distance", port.limits.min);
        table.cell("max_distance", port.limits.max);
    }
    return finish(table);
}

constexpr Handler handlers[] = {
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
