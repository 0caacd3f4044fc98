// These operations set the detection of forwarding loops behind the PON ports and the recovery of the ports that it
// shut down.
#include "frame/view.h"

using frame::on;
using frame::Request;
using frame::Route;

namespace
{

constexpr uint32_t config_size = 80;

FRAME_SHARED uint32_t send(uint32_t command, uint32_t setting, Route route = on(BSP_MSG_LOOP_DETECT))
{
    Request<bsp_pon_msg_ext> request{command};
    request->ext_arg = setting;
    return frame::set(*request, route);
}

} // namespace

uint32_t bsp_pon_loop_detect_status(uint8_t state)
{
    return send(BSP_CMD_LOOP_STATE_SET, state);
}

uint32_t bsp_pon_loop_detect_recover_mode(uint8_t mode)
{
    return send(BSP_CMD_LOOP_RECOVER_MODE_SET, mode);
}

uint32_t bsp_pon_loop_detect_recover_manual(void)
{
    return send(BSP_CMD_LOOP_RECOVER, 0);
}

uint32_t bsp_pon_loop_detect_recover_time(uint32_t time)
{
    return send(BSP_CMD_LOOP_RECOVER_TIME_SET, time);
}

uint32_t bsp_pon_loop_detect_pkt_send_interval(uint32_t interval)
{
    return send(BSP_CMD_LOOP_INTERVAL_SET, interval);
}

uint32_t bsp_pon_get_loop_detect_info(db_handle **db_out)
{
    return frame::get_view_of_all(BSP_CMD_LOOP_INFO, db_out, on(BSP_MSG_LOOP_DETECT));
}

uint32_t bsp_pon_get_loop_detect_config(void *cfg)
{
    return frame::get_block(*Request<bsp_pon_msg_ext>{BSP_CMD_LOOP_CONFIG_GET}, offsetof(bsp_pon_msg_ext, ext_payload),
                            cfg, config_size, frame::silently_on(BSP_MSG_LOOP_DETECT));
}
