// These operations send any command of the PON channel, also one without an operation of its own.
#include "frame/exchange.h"
#include "frame/request.h"

using frame::on;
using frame::Request;
using frame::Route;

namespace
{

FRAME_SHARED uint32_t get_by_command(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out,
                                     uint32_t bound, Route route)
{
    Request<bsp_pon_msg> request{command, pon_port, onu_id};
    return frame::get_database(*request, frame::unoffered<bsp_pon_msg>, command, bound, db_out, route);
}

} // namespace

uint32_t bsp_pon_exec_get(bsp_pon_msg *record)
{
    return frame::get_in_place(*record, on(BSP_MSG_PON));
}

uint32_t bsp_pon_exec_set(const bsp_pon_msg *record)
{
    return frame::set(*record, on(BSP_MSG_PON));
}

uint32_t bsp_pon_exec_get_json(uint32_t cmd, uint32_t pon_port, uint32_t, db_handle **db_out)
{
    return get_by_command(pon_port, 0, cmd, db_out, frame::small_view, on(BSP_MSG_PON));
}

uint32_t bsp_pon_exec_get_json_(uint32_t cmd, uint32_t pon_port, uint32_t, db_handle **db_out)
{
    return get_by_command(pon_port, 0, cmd, db_out, frame::large_view, on(BSP_MSG_PON));
}

uint32_t bsp_pon_exec_get_file(uint32_t cmd, uint32_t pon_port, char *name_out)
{
    Request<bsp_pon_msg> request{cmd, pon_port, 0};
    return frame::get_text(*request, frame::unoffered<bsp_pon_msg>, offsetof(bsp_pon_msg, data429), name_out,
                           on(BSP_MSG_PON));
}

uint32_t bsp_pon_exec_get_onu_json(uint32_t cmd, uint32_t pon_port, uint32_t onu_id, uint32_t, db_handle **db_out)
{
    return get_by_command(pon_port, onu_id, cmd, db_out, frame::large_view, on(BSP_MSG_PON));
}
