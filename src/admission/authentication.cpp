// These operations set how the ONUs of a PON port prove who they are, confirm the ONUs that wait, and describe the ONUs
// that are bound.
#include "frame/send.h"
#include "frame/view.h"

using frame::on;
using frame::Request;
using frame::set;

uint32_t bsp_pon_onu_auth_mode_type_set(uint32_t pon_port, const char *text_a, const char *text_b, uint32_t mode)
{
    Request<bsp_pon_msg> request{BSP_CMD_AUTH_SET, pon_port, 0};
    request.put(&bsp_pon_msg::text45, text_a);
    request.put(&bsp_pon_msg::text109, text_b);
    request->arg_word12 = mode;
    return set(*request, on(BSP_MSG_PON));
}

uint32_t bsp_pon_onu_auth_set(const bsp_pon_msg *record)
{
    return frame::send_copy(record, BSP_CMD_AUTH_SET, on(BSP_MSG_PON));
}

uint32_t bsp_pon_onu_auth_mode_type_get(uint32_t pon_port, void *resp)
{
    Request<bsp_pon_msg> request{BSP_CMD_AUTH_GET, pon_port, 0};
    return frame::get_into(*request, resp, sizeof *request, on(BSP_MSG_PON));
}

uint32_t bsp_pon_onu_auth_infolist_get(db_handle **db_out)
{
    return frame::get_view(0, 0, {BSP_CMD_AUTH_LIST, frame::small_view}, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_confirm_onu(uint32_t pon_port, const bsp_pon_msg *onu)
{
    if (!onu) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{BSP_CMD_ONU_CONFIRM, pon_port, 0};
    if (onu->onu_id)
        request->onu_id = onu->onu_id;
    else
        request.put_mac(onu->onu_mac);
    request->arg_byte16 = onu->arg_byte16;
    request->arg_word36 = onu->arg_word36;
    return set(*request, on(BSP_MSG_PON));
}

uint32_t bsp_pon_onu_description(uint32_t pon_port, uint32_t onu_id, const char *text)
{
    if (!text) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{BSP_CMD_ONU_DESCRIPTION_SET, pon_port, onu_id};
    request.put(&bsp_pon_msg::text237, text);
    return set(*request, on(BSP_MSG_PON));
}
