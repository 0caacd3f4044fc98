// These operations bind ONUs to ONU ids and release them.
#include "frame/send.h"

using frame::on;
using frame::Request;
using frame::Route;
using frame::send;
using frame::set;

namespace
{

// In the record, the first text stands behind the second one.
FRAME_SHARED uint32_t bind(uint32_t command, uint32_t pon_port, uint32_t onu_id, const uint8_t *mac, const char *text_a,
                           const char *text_b, uint32_t value, const char *text_c, Route route = on(BSP_MSG_PON))
{
    if (!mac) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{command, pon_port, onu_id};
    request.put_mac(mac);
    request.put(&bsp_pon_msg::text237, text_a);
    request.put(&bsp_pon_msg::text173, text_b);
    request.put(&bsp_pon_msg::text365, text_c);
    request->arg_value = value;
    return set(*request, route);
}

} // namespace

uint32_t bsp_pon_cfg(uint32_t cmd, uint32_t pon_port, const void *data, uint32_t length)
{
    return send(pon_port, 0, cmd, nullptr, on(BSP_MSG_PON), 0, data, length);
}

uint32_t bsp_ponmsg_cfg_set(const bsp_pon_msg *record)
{
    return set(*record, on(BSP_MSG_PON));
}

uint32_t bsp_pon_bind_onu_auto_id(uint32_t pon_port, const uint8_t *mac, const char *text_a, const char *text_b,
                                  uint32_t value, const char *text_c)
{
    return bind(BSP_CMD_ONU_BIND_AUTO, pon_port, 0, mac, text_a, text_b, value, text_c);
}

uint32_t bsp_pon_onu_support_set(uint32_t pon_port, const uint8_t *mac, uint32_t value)
{
    if (!mac) return BSP_ERR_PARAM;
    return send(pon_port, 0, BSP_CMD_ONU_SUPPORT_SET, mac, on(BSP_MSG_PON), value);
}

uint32_t bsp_pon_bind_onu_spec_id(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac, const char *text_a,
                                  const char *text_b, uint32_t value, const char *text_c)
{
    return bind(BSP_CMD_ONU_BIND, pon_port, onu_id, mac, text_a, text_b, value, text_c);
}

uint32_t bsp_pon_no_bind_onu_spec_id(uint32_t pon_port, uint32_t onu_id)
{
    return send(pon_port, onu_id, BSP_CMD_ONU_RELEASE, nullptr, on(BSP_MSG_PON));
}

uint32_t bsp_pon_no_bind_onu_spec_id_and_mac(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac)
{
    Request<bsp_pon_msg> request{BSP_CMD_ONU_RELEASE, pon_port, onu_id};
    request.put_mac(mac);
    return set(*request, on(BSP_MSG_PON));
}

uint32_t bsp_pon_no_bind_onu_by_mac(uint32_t pon_port, const uint8_t *mac)
{
    if (!mac) return BSP_ERR_PARAM;
    return send(pon_port, 0, BSP_CMD_ONU_RELEASE, mac, on(BSP_MSG_PON));
}

uint32_t bsp_pon_no_bind_onu_all(uint32_t pon_port)
{
    return send(pon_port, 0, BSP_CMD_ONU_RELEASE_ALL, nullptr, on(BSP_MSG_PON));
}

uint32_t bsp_pon_no_bind_offline_onu_all(uint32_t pon_port)
{
    return send(pon_port, 0, BSP_CMD_ONU_RELEASE_OFFLINE, nullptr, on(BSP_MSG_PON));
}

uint32_t bsp_pon_no_bind_onu_batch_spec_id(const bsp_pon_msg *record)
{
    return frame::send_copy(record, BSP_CMD_ONU_RELEASE_BATCH, on(BSP_MSG_PON));
}

uint32_t bsp_pon_reboot_onu_batch(const bsp_pon_msg *record)
{
    return frame::send_copy(record, BSP_CMD_ONU_REBOOT_BATCH, on(BSP_MSG_PON));
}

uint32_t bsp_pon_onu_batch_sort(const bsp_pon_msg *record)
{
    return frame::send_copy(record, BSP_CMD_ONU_SORT_BATCH, on(BSP_MSG_PON));
}

uint32_t bsp_pon_set_opt_range(const bsp_pon_msg *record)
{
    return frame::send_copy(record, BSP_CMD_OPT_RANGE_SET, on(BSP_MSG_PON));
}
