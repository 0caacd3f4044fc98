// These operations configure an ONU, or the OAM of the service, by a record, a block or a word.
#include "frame/onu.h"

using frame::ErrorPolicy;
using frame::on;
using frame::set;

namespace
{

constexpr uint32_t image_size = 260;
constexpr uint32_t mgmt_size = 17;

} // namespace

uint32_t bsp_pon_onu_ctc_debug(const bsp_onu_msg *msg)
{
    if (!msg) return BSP_ERR_PARAM;
    return set(*msg, on(BSP_MSG_ONU_INFO, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_config(const bsp_onu_msg *msg)
{
    if (!msg) return BSP_ERR_PARAM;
    return set(*msg, on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_alarm_more_test(const bsp_onu_msg *msg)
{
    uint32_t ignored = BSP_OK; // the service's status word is not the result of a test
    return static_cast<uint32_t>(ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_ONU_INFO, msg, sizeof *msg, &ignored));
}

uint32_t bsp_pon_onu_ctc_oam_print(uint32_t value)
{
    return frame::set_onu(0, 0, BSP_CMD_OAM_PRINT, nullptr, 0, value, frame::silently_on(BSP_MSG_ONU_OAM));
}

uint32_t bsp_pon_onu_ctc_set_multillid(uint32_t pon_port, uint32_t onu_id, uint32_t count)
{
    return frame::set_onu(pon_port, onu_id, BSP_CMD_ONU_MULTI_LLID_SET, nullptr, 0, count,
                          on(BSP_MSG_ONU_INFO, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_update_image(uint32_t pon_port, uint32_t onu_id, const void *image)
{
    if (!image) return BSP_ERR_PARAM;
    return frame::set_onu(pon_port, onu_id, BSP_CMD_ONU_IMAGE_UPDATE, image, image_size, 0,
                          on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_set_mgmt(uint32_t pon_port, uint32_t onu_id, const void *mgmt)
{
    if (!mgmt) return BSP_ERR_PARAM;
    return frame::set_onu(pon_port, onu_id, BSP_CMD_ONU_MGMT_SET, mgmt, mgmt_size, 0,
                          on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}
