#include "model/olt/llid.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/block.h"
#include "model/olt/olt.h"

namespace ponsim
{

bool is_good(const LlidBehavior &behavior)
{
    if (behavior.frames > Frames::dropped || behavior.over_limit > 1 || behavior.isolated > 1) return false;
    return behavior.broadcast_rate <= line_rate && behavior.multicast_rate <= line_rate &&
           behavior.unknown_rate <= line_rate;
}

LlidBehavior llid_behavior(const Olt &olt, uint32_t pon_port, uint32_t llid)
{
    return from_block(olt.block(BSP_MSG_PLAT, BSP_CMD_LLID_BEHAVIOR_SET, pon_port, llid), LlidBehavior{});
}

Plan set_llid_behavior(const Olt &olt, uint32_t pon_port, uint32_t llid, const LlidBehavior &behavior)
{
    if (!olt.port(pon_port)) return {PON_ERR_NO_PORT};
    if (llid < 1 || llid > onus_per_port) return {PON_ERR_BAD_LLID};
    if (!is_good(behavior)) return {PON_ERR_BAD_RECORD};
    Plan plan{BSP_OK};
    plan.change.add(block_at({BSP_MSG_PLAT, BSP_CMD_LLID_BEHAVIOR_SET, pon_port, llid},
                             behavior == LlidBehavior{} ? std::nullopt : std::optional(to_block(behavior))));
    return plan;
}

} // namespace ponsim
