// These commands concern alarms of ONUs and of ports.
#include "model/alarm/alarms.h"

#include "generated/service_words.h"
#include "handlers/record.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

// Calls `visit` with key and record of each selected alarm, in order. Returns false when no ONU is bound to the
// requested id. The alarms of uplinks belong to no port, and are selected where all ports are.
template <class Visit>
bool each_alarm(const Olt &olt, const Selection &selection, Visit visit)
{
    bool found = selection.id == 0;
    const auto each_at = [&](uint32_t pon_port, const Mac &mac) {
        const Alarms &alarms = olt.alarms(pon_port);
        for (auto alarm = alarms.lower_bound({mac, 0}); alarm != alarms.end(); ++alarm) {
            const auto &[at, record] = *alarm;
            if (!is_zero(mac) && at.mac != mac) break;
            visit(AlarmKey{pon_port, at.mac, at.alarm, at.unit}, record);
        }
    };
    if (selection.all_ports && !selection.narrowed()) each_at(0, {});
    for (const PonPort &port : selection.ports) {
        Mac mac = selection.mac;
        if (selection.id != 0) {
            const std::optional<Binding> &binding = port.bindings[selection.id];
            if (!binding || (!is_zero(mac) && mac != binding->mac)) continue;
            mac = binding->mac;
            found = true;
        }
        each_at(port.number, mac);
    }
    return found;
}

Outcome view(const Olt &olt, const Request &request)
{
    const Selection selection = selection_of(olt, request);
    if (selection.status != BSP_OK) return {selection.status};
    Table<view::onu_alarm> table;
    const bool found = each_alarm(olt, selection, [&](const AlarmKey &key, const AlarmRecord &record) {
        const std::string place = place_of(olt, key, record.reason);
        table.add({.pon_port = key.pon_port,
                   .onu_id = olt.id_at(key.pon_port, key.mac),
                   .mac = is_zero(key.mac) ? std::nullopt : std::optional(key.mac),
                   .alarm = key.alarm,
                   .name = name_of(Alarm{key.alarm}),
                   .severity = severity_of(Alarm{key.alarm}),
                   .count = record.count,
                   .state = state_of(record.active()),
                   .raised = record.raised,
                   .cleared = record.cleared,
                   .cause = name_of(record.reason.cause),
                   .place = place.empty() ? std::nullopt : std::optional<std::string_view>(place)});
    });
    std::string text = table.text();
    if (text.size() > max_result) return {PON_ERR_TOO_LARGE};
    return {found ? BSP_OK : PON_ERR_NOT_BOUND, {}, std::move(text)};
}

Outcome clear(const Olt &olt, const Request &request)
{
    const Selection selection = selection_of(olt, request);
    if (selection.status != BSP_OK) return {selection.status};
    const uint32_t wanted = request.read<bsp_pon_msg>().arg_value;
    if (wanted != 0 && !is_alarm(wanted)) return {PON_ERR_BAD_RECORD};
    Change change;
    const bool found = each_alarm(olt, selection, [&](const AlarmKey &key, const AlarmRecord &) {
        if (wanted == 0 || wanted == key.alarm) clear_by_command(olt, key, change);
    });
    return {found ? BSP_OK : PON_ERR_NOT_BOUND, std::move(change)};
}

constexpr Handler handlers[] = {
    {BSP_MSG_PON, BSP_CMD_VIEW_ONU_ALARM, view},
    {BSP_MSG_PON, BSP_CMD_ONU_ALARM_CLEAR, clear},
};

} // namespace

std::span<const Handler> alarm_handlers()
{
    return handlers;
}

} // namespace ponsim
