// These commands concern loop detection: its settings, what it has found, and recovery.
#include "model/port/loops.h"

#include <algorithm>

#include "generated/service_words.h"
#include "handlers/record.h"
#include "views/loop.h"

namespace ponsim
{
namespace
{

template <Plan (*set)(const Olt &, uint32_t)>
Outcome setting(const Olt &olt, const Request &request)
{
    return to_outcome(set(olt, request.read<bsp_pon_msg_ext>().ext_arg));
}

Outcome recover(const Olt &olt, const Request &)
{
    return to_outcome(recover_all(olt));
}

Outcome info(const Olt &olt, const Request &)
{
    return {BSP_OK, {}, loop_table(olt)};
}

Outcome config(const Olt &olt, const Request &request)
{
    namespace at = layout::loop_config;
    const LoopDetection &detection = olt.loop_detection();
    auto record = request.read<bsp_pon_msg_ext>();
    std::ranges::fill(record.ext_payload, uint8_t{0});
    Answer answer(record);
    answer.put(at::state, detection.on);
    answer.put(at::mode, detection.manual);
    answer.put(at::time, detection.recovery_time);
    answer.put(at::interval, detection.interval);
    const auto shut = std::ranges::count_if(olt.loops(), [](const auto &loop) { return loop.second.shut; });
    answer.put(at::shut, shut);
    answer.put(at::detected, detection.detected);
    answer.put(at::recovered, detection.recovered);
    return answer.outcome();
}

constexpr Handler handlers[] = {
    {BSP_MSG_LOOP_DETECT, BSP_CMD_LOOP_STATE_SET, setting<detect_loops>},
    {BSP_MSG_LOOP_DETECT, BSP_CMD_LOOP_RECOVER_MODE_SET, setting<set_recovery_mode>},
    {BSP_MSG_LOOP_DETECT, BSP_CMD_LOOP_RECOVER, recover},
    {BSP_MSG_LOOP_DETECT, BSP_CMD_LOOP_RECOVER_TIME_SET, setting<set_recovery_time>},
    {BSP_MSG_LOOP_DETECT, BSP_CMD_LOOP_INTERVAL_SET, setting<set_packet_interval>},
    {BSP_MSG_LOOP_DETECT, BSP_CMD_LOOP_INFO, info},
    {BSP_MSG_LOOP_DETECT, BSP_CMD_LOOP_CONFIG_GET, config},
};

} // namespace

std::span<const Handler> loop_handlers()
{
    return handlers;
}

} // namespace ponsim
