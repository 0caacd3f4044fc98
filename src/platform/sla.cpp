// These operations manage service level agreements. Unlike most operations, they return the IPC library's own value
// when an exchange fails.
#include "frame/platform.h"
#include "frame/send.h"

using frame::ErrorPolicy;
using frame::on;
using frame::Request;
using frame::Route;

namespace
{

constexpr uint32_t sla_size = 20;
constexpr uint32_t sla_down_size = 4;

FRAME_SHARED uint32_t view(uint32_t command, uint32_t pon_port, db_handle **db_out)
{
    Request<bsp_plat_msg> request{command, pon_port, 0};
    return bsp_pon_platform_by_db(db_out, &*request);
}

// The request offers no byte for the answer, and the answer is read all the same.
FRAME_SHARED uint32_t get(uint32_t pon_port, uint32_t onu_id, void *out, frame::Command command, Route route)
{
    if (!out) return BSP_ERR_PARAM;
    Request<bsp_plat_msg> request{command.code, pon_port, onu_id};
    return frame::get_block(*request, offsetof(bsp_plat_msg, plat_data), out, command.size, route,
                            frame::unoffered<bsp_plat_msg>);
}

} // namespace

uint32_t bsp_pon_onu_sla_config(bsp_plat_msg *record)
{
    return frame::send_stamped(record, BSP_CMD_SLA_SET, on(BSP_MSG_PLAT, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_sla_down_config(bsp_plat_msg *record)
{
    return frame::send_stamped(record, BSP_CMD_SLA_DOWN_SET, on(BSP_MSG_PLAT, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_sla_get(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return get(pon_port, onu_id, out, {BSP_CMD_SLA_GET, sla_size}, on(BSP_MSG_PLAT, ErrorPolicy::pass));
}

uint32_t bsp_pon_plat_onu_sla_get(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return get(pon_port, onu_id, out, {BSP_CMD_DEBUG_SLA_GET, sla_size}, on(BSP_MSG_DEBUG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_sla_down_get(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return get(pon_port, onu_id, out, {BSP_CMD_SLA_DOWN_GET, sla_down_size}, on(BSP_MSG_PLAT, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_sla_all_get(uint32_t pon_port, void *out)
{
    return get(pon_port, 0, out, {BSP_CMD_SLA_PORT_GET, sla_size}, on(BSP_MSG_PLAT, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_sla_get_web(uint32_t pon_port, db_handle **db_out)
{
    return view(BSP_CMD_VIEW_SLA_WEB, pon_port, db_out);
}

uint32_t bsp_pon_onu_sla_down_get_web(uint32_t pon_port, db_handle **db_out)
{
    return view(BSP_CMD_VIEW_SLA_DOWN_WEB, pon_port, db_out);
}

uint32_t bsp_pon_onu_sla_get_snmp(db_handle **db_out)
{
    return view(BSP_CMD_VIEW_SLA_SNMP, 0, db_out);
}
