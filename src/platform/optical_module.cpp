// The behaviour of a logical link, and control of a PON port's optical module.
#include "platform/requests.h"

using platform::send;

namespace
{

constexpr uint32_t llid_size = 24;
constexpr uint32_t opm_size = 12;
constexpr uint32_t lao_size = 12;
constexpr uint32_t lol_size = 8;

} // namespace

uint32_t bsp_llid_behavior_set(uint32_t pon_port, uint32_t llid, uint32_t behavior, const void *params)
{
    return send(pon_port, llid, BSP_CMD_LLID_BEHAVIOR_SET, params, llid_size, behavior);
}

uint32_t bsp_om_opm_trigger_set(uint32_t pon_port, uint32_t id, const void *params)
{
    return send(pon_port, id, BSP_CMD_OPM_TRIGGER, params, opm_size);
}

uint32_t bsp_om_opm_cancel_set(uint32_t pon_port)
{
    return send(pon_port, 0, BSP_CMD_OPM_CANCEL, nullptr, 0);
}

uint32_t bsp_om_lao_mode_set(uint32_t pon_port, uint32_t mode, const void *params)
{
    return send(pon_port, 0, BSP_CMD_LAO_MODE_SET, params, lao_size, 0, mode);
}

uint32_t bsp_om_lol_mode_set(uint32_t pon_port, uint32_t id, uint32_t mode, const void *params)
{
    return send(pon_port, id, BSP_CMD_LOL_MODE_SET, params, lol_size, 0, mode);
}
