// The behaviour of a logical link, and control of a PON port's optical module.
#include "frame/exchange.h"
#include "frame/request.h"

using frame::Request;
using frame::set;

namespace
{

constexpr uint32_t llid_size = 24;
constexpr uint32_t opm_size = 12;
constexpr uint32_t lao_size = 12;
constexpr uint32_t lol_size = 8;

} // namespace

uint32_t bsp_llid_behavior_set(uint32_t pon_port, uint32_t llid, uint32_t behavior, const void *params)
{
    Request<bsp_plat_msg> request{BSP_CMD_LLID_BEHAVIOR_SET};
    request->plat_port = pon_port;
    request->plat_arg4 = llid;
    request->plat_arg108 = behavior;
    request.copy<llid_size>(&bsp_plat_msg::plat_data, params);
    return set(BSP_MSG_PLAT, *request);
}

uint32_t bsp_om_opm_trigger_set(uint32_t pon_port, uint32_t id, const void *params)
{
    Request<bsp_plat_msg> request{BSP_CMD_OPM_TRIGGER};
    request->plat_port = pon_port;
    request->plat_arg4 = id;
    request.copy<opm_size>(&bsp_plat_msg::plat_data, params);
    return set(BSP_MSG_PLAT, *request);
}

uint32_t bsp_om_opm_cancel_set(uint32_t pon_port)
{
    Request<bsp_plat_msg> request{BSP_CMD_OPM_CANCEL};
    request->plat_port = pon_port;
    return set(BSP_MSG_PLAT, *request);
}

uint32_t bsp_om_lao_mode_set(uint32_t pon_port, uint32_t mode, const void *params)
{
    Request<bsp_plat_msg> request{BSP_CMD_LAO_MODE_SET};
    request->plat_port = pon_port;
    request->plat_arg112 = mode;
    request.copy<lao_size>(&bsp_plat_msg::plat_data, params);
    return set(BSP_MSG_PLAT, *request);
}

uint32_t bsp_om_lol_mode_set(uint32_t pon_port, uint32_t id, uint32_t mode, const void *params)
{
    Request<bsp_plat_msg> request{BSP_CMD_LOL_MODE_SET};
    request->plat_port = pon_port;
    request->plat_arg4 = id;
    request->plat_arg112 = mode;
    request.copy<lol_size>(&bsp_plat_msg::plat_data, params);
    return set(BSP_MSG_PLAT, *request);
}
