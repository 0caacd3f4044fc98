// These commands concern performance monitoring of UNI ports, and the CATV port, which is switched together with it.
#include "model/port/performance.h"

#include <cstddef>

#include "generated/service_words.h"
#include "handlers/remote.h"

namespace ponsim
{
namespace
{

// The counters go out as they are stored.
static_assert(layout::onu_performance::status_changes.offset ==
              layout::onu_performance::down_drop_events.offset + offsetof(UniCounters, status_changes));

Outcome set_switch(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const auto on = request.get(layout::onu_switch::on);
    if (on > 1) return {PON_ERR_BAD_RECORD};
    return to_outcome(switch_on(olt, found.onu, on == 1));
}

Outcome catv_state(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    if (!has_catv(found.onu.device)) return {PON_ERR_NOT_ABLE};
    OnuBlock block(1);
    block.put(layout::onu_catv_state::on, switched_on(olt, found.onu, Side::remote));
    return answer_with(request, block);
}

Outcome monitor(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_perf_monitor;
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const std::optional<ModelTime> since = on_since(olt, found.onu);
    OnuBlock block(16);
    block.put(at::state, since.has_value());
    block.put(at::period, monitoring_period / ms_per_second);
    block.put(at::since, since.value_or(0));
    return answer_with(request, block);
}

Outcome counters(const Olt &olt, const Request &request,
                 std::optional<MonitoringTime> (*period)(const Olt &olt, const RemoteOnu &onu))
{
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const std::optional<MonitoringTime> time = period(olt, found.onu);
    if (!time) return {PON_ERR_NOT_MONITORED};
    const UniCounters counted = uni_counters(olt, found.onu, request.read<bsp_onu_msg>().onu_uni_port, *time);
    return answer_with(request, std::string_view(reinterpret_cast<const char *>(&counted), sizeof counted));
}

Outcome current(const Olt &olt, const Request &request)
{
    return counters(olt, request, current_period);
}

Outcome history(const Olt &olt, const Request &request)
{
    return counters(olt, request, last_period);
}

constexpr Handler handlers[] = {
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_MONITOR_SET, set_switch},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_CATV_STATE_GET, catv_state},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_MONITOR_GET, monitor},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_CURRENT_GET, current},
    {BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_HISTORY_GET, history},
};

} // namespace

std::span<const Handler> onu_performance_handlers()
{
    return handlers;
}

} // namespace ponsim
