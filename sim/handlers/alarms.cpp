// These commands concern alarms of ONUs and of ports.
#include "model/lifecycle/alarms.h"

#include "generated/service_words.h"
#include "handlers/record.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

// Calls `visit` with port, MAC address, code and count of each selected alarm, in order. Returns false when no ONU is
// bound to the requested id.
template <class Visit>
bool each_alarm(const Selection &selection, Visit visit)
{
    bool found = selection.id == 0;
    for (const PonPort &port : selection.ports) {
        Mac mac = selection.mac;
        if (selection.id != 0) {
            const std::optional<Binding> &binding = port.bindings[selection.id];
            if (!binding || (!is_zero(mac) && mac != binding->mac)) continue;
            mac = binding->mac;
            found = true;
        }
        for (auto alarm = port.alarms.lower_bound({mac, 0}); alarm != port.alarms.end(); ++alarm) {
            const auto &[onu, code] = alarm->first;
            if (!is_zero(mac) && onu != mac) break;
            visit(port, onu, code, alarm->second);
        }
    }
    return found;
}

Outcome view(const Olt &olt, const Request &request)
{
    const Selection selection = selection_of(olt, request);
    if (selection.status != BSP_OK) return {selection.status};
    Table<view::onu_alarm> table;
    const bool found = each_alarm(selection, [&](const PonPort &port, const Mac &mac, uint32_t code, uint32_t count) {
        table.add({.pon_port = port.number,
                   .onu_id = olt.id_at(port.number, mac),
                   .mac = is_zero(mac) ? std::nullopt : std::optional(mac),
                   .alarm = code,
                   .name = name_of(Alarm{code}),
                   .severity = severity_of(Alarm{code}),
                   .count = count});
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
    const bool found = each_alarm(selection, [&](const PonPort &port, const Mac &mac, uint32_t code, uint32_t) {
        if (wanted == 0 || wanted == code) change.drop<AlarmCount>({port.number, mac, code});
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
