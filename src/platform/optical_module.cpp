// These operations set the behaviour of a logical link and control the optical module of a PON port.
#include "frame/platform.h"

using frame::set_platform;

namespace
{

constexpr uint32_t llid_size = 24;
constexpr uint32_t opm_size = 12;
constexpr uint32_t lao_size = 12;
constexpr uint32_t lol_size = 8;

} // namespace

uint32_t bsp_llid_behavior_set(uint32_t pon_port, uint32_t llid, uint32_t behavior, const void *params)
{
    return frame::set_platform_words(pon_port, llid, params, {BSP_CMD_LLID_BEHAVIOR_SET, llid_size}, behavior, 0);
}

uint32_t bsp_om_opm_trigger_set(uint32_t pon_port, uint32_t id, const void *params)
{
    return set_platform(pon_port, id, params, {BSP_CMD_OPM_TRIGGER, opm_size});
}

uint32_t bsp_om_opm_cancel_set(uint32_t pon_port)
{
    return set_platform(pon_port, 0, nullptr, {BSP_CMD_OPM_CANCEL, 0});
}

uint32_t bsp_om_lao_mode_set(uint32_t pon_port, uint32_t mode, const void *params)
{
    return frame::set_platform_words(pon_port, 0, params, {BSP_CMD_LAO_MODE_SET, lao_size}, 0, mode);
}

uint32_t bsp_om_lol_mode_set(uint32_t pon_port, uint32_t id, uint32_t mode, const void *params)
{
    return frame::set_platform_words(pon_port, id, params, {BSP_CMD_LOL_MODE_SET, lol_size}, 0, mode);
}
