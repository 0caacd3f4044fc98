// Binding ONUs to ONU ids and releasing them.
#include "frame/exchange.h"
#include "frame/request.h"

using frame::Request;
using frame::set;

namespace
{

// What both ways to bind say of an ONU. In the record, the first text stands behind the second.
inline void describe(Request<bsp_pon_msg> &request, uint32_t pon_port, const uint8_t *mac, const char *text_a,
                     const char *text_b, uint32_t value, const char *text_c)
{
    request->pon_port = pon_port;
    request.put_mac(mac);
    request.put(&bsp_pon_msg::text237, text_a);
    request.put(&bsp_pon_msg::text173, text_b);
    request.put(&bsp_pon_msg::text365, text_c);
    request->arg_value = value;
}

} // namespace

uint32_t bsp_pon_cfg(uint32_t cmd, uint32_t pon_port, const void *data, uint32_t length)
{
    Request<bsp_pon_msg> request{cmd};
    request->pon_port = pon_port;
    request.put(&bsp_pon_msg::data429, data, length);
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_ponmsg_cfg_set(const bsp_pon_msg *record)
{
    return set(BSP_MSG_PON, *record);
}

uint32_t bsp_pon_bind_onu_auto_id(uint32_t pon_port, const uint8_t *mac, const char *text_a, const char *text_b,
                                  uint32_t value, const char *text_c)
{
    if (!mac) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{BSP_CMD_ONU_BIND_AUTO};
    describe(request, pon_port, mac, text_a, text_b, value, text_c);
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_pon_onu_support_set(uint32_t pon_port, const uint8_t *mac, uint32_t value)
{
    if (!mac) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{BSP_CMD_ONU_SUPPORT_SET};
    request->pon_port = pon_port;
    request.put_mac(mac);
    request->arg_value = value;
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_pon_bind_onu_spec_id(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac, const char *text_a,
                                  const char *text_b, uint32_t value, const char *text_c)
{
    if (!mac) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{BSP_CMD_ONU_BIND};
    request->onu_id = onu_id;
    describe(request, pon_port, mac, text_a, text_b, value, text_c);
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_pon_no_bind_onu_spec_id(uint32_t pon_port, uint32_t onu_id)
{
    Request<bsp_pon_msg> request{BSP_CMD_ONU_RELEASE};
    request->pon_port = pon_port;
    request->onu_id = onu_id;
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_pon_no_bind_onu_spec_id_and_mac(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac)
{
    Request<bsp_pon_msg> request{BSP_CMD_ONU_RELEASE};
    request->pon_port = pon_port;
    request->onu_id = onu_id;
    request.put_mac(mac);
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_pon_no_bind_onu_by_mac(uint32_t pon_port, const uint8_t *mac)
{
    if (!mac) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{BSP_CMD_ONU_RELEASE};
    request->pon_port = pon_port;
    request.put_mac(mac);
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_pon_no_bind_onu_all(uint32_t pon_port)
{
    Request<bsp_pon_msg> request{BSP_CMD_ONU_RELEASE_ALL};
    request->pon_port = pon_port;
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_pon_no_bind_offline_onu_all(uint32_t pon_port)
{
    Request<bsp_pon_msg> request{BSP_CMD_ONU_RELEASE_OFFLINE};
    request->pon_port = pon_port;
    return set(BSP_MSG_PON, *request);
}

uint32_t bsp_pon_no_bind_onu_batch_spec_id(const bsp_pon_msg *record)
{
    return set(BSP_MSG_PON, *Request{BSP_CMD_ONU_RELEASE_BATCH, *record});
}

uint32_t bsp_pon_reboot_onu_batch(const bsp_pon_msg *record)
{
    return set(BSP_MSG_PON, *Request{BSP_CMD_ONU_REBOOT_BATCH, *record});
}

uint32_t bsp_pon_onu_batch_sort(const bsp_pon_msg *record)
{
    return set(BSP_MSG_PON, *Request{BSP_CMD_ONU_SORT_BATCH, *record});
}

uint32_t bsp_pon_set_opt_range(const bsp_pon_msg *record)
{
    return set(BSP_MSG_PON, *Request{BSP_CMD_OPT_RANGE_SET, *record});
}
