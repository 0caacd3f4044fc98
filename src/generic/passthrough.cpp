// Any command of the PON channel, without an operation of its own.
#include "frame/view.h"

using frame::get_view;
using frame::on;
using frame::Request;

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
    return get_view(pon_port, 0, cmd, db_out, frame::small_view, on(BSP_MSG_PON), frame::no_length);
}

uint32_t bsp_pon_exec_get_json_(uint32_t cmd, uint32_t pon_port, uint32_t, db_handle **db_out)
{
    return get_view(pon_port, 0, cmd, db_out, frame::large_view, on(BSP_MSG_PON), frame::no_length);
}

uint32_t bsp_pon_exec_get_file(uint32_t cmd, uint32_t pon_port, char *name_out)
{
    Request<bsp_pon_msg> request{cmd};
    request->pon_port = pon_port;
    return frame::get_text(*request, frame::no_length, offsetof(bsp_pon_msg, data429), name_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_exec_get_onu_json(uint32_t cmd, uint32_t pon_port, uint32_t onu_id, uint32_t, db_handle **db_out)
{
    return get_view(pon_port, onu_id, cmd, db_out, frame::large_view, on(BSP_MSG_PON), frame::no_length);
}
