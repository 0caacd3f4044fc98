// These operations return tables of all ONUs, of the OLT and of its PON ports.
#include "frame/onu.h"
#include "frame/view.h"

using frame::ErrorPolicy;
using frame::get_view;
using frame::large_view;
using frame::on;
using frame::Request;

namespace
{

// Asks for a table of the OLT. The key of the result is read from the request.
FRAME_SHARED uint32_t olt_view(uint32_t command, db_handle **db_out, frame::Route route)
{
    Request<bsp_pon_msg> request{command};
    return frame::get_database(*request, frame::view_room, request->cmd, frame::small_view, db_out, route);
}

} // namespace

uint32_t bsp_pon_get_onu_optical_diag_by_pon(uint32_t pon_port, db_handle **db_out)
{
    return get_view(pon_port, 0, {BSP_CMD_VIEW_ONU_OPTICS, large_view}, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_onu_optical_diag_data_all(db_handle **db_out)
{
    return get_view(0, 0, {BSP_CMD_VIEW_ONU_OPTICS_ALL, large_view}, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_onu_perf_stat_data_all(db_handle **db_out)
{
    return get_view(0, 0, {BSP_CMD_VIEW_ONU_STATS_ALL, large_view}, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_onu_get_configure(uint32_t pon_port, uint32_t onu_id, uint32_t *out)
{
    auto request = frame::request_to_onu(BSP_CMD_ONU_CONFIG_WORD, pon_port, onu_id);
    return frame::get_block(*request, offsetof(bsp_onu_msg, onu_word20), out, sizeof *out,
                            on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_get_allonuinfo(char *text_out)
{
    return frame::get_text(*Request<bsp_pon_msg>{BSP_CMD_ALL_ONU_INFO}, frame::view_room,
                           offsetof(bsp_pon_msg_ext, ext_payload), text_out, on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_pon_get_port_info(db_handle **db_out)
{
    return olt_view(BSP_CMD_VIEW_PORT_INFO, db_out, on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_pon_get_basic_info(db_handle **db_out)
{
    return olt_view(BSP_CMD_VIEW_BASIC_INFO, db_out, on(BSP_MSG_PON, ErrorPolicy::pass));
}
