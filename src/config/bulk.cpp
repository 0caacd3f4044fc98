// Tables of all ONUs, and of the OLT and its PON ports.
#include "frame/view.h"
#include "onu/remote.h"

using frame::Failure;
using frame::get_view;
using frame::large_view;
using frame::on;
using frame::Request;

namespace
{

// A table of the OLT, whose key is read from the request.
FRAME_SHARED uint32_t olt_view(uint32_t command, db_handle **db_out, frame::Way way)
{
    Request<bsp_pon_msg> request{command};
    return frame::get_database(*request, frame::view_length, request->cmd, frame::small_view, db_out, way);
}

} // namespace

uint32_t bsp_pon_get_onu_optical_diag_by_pon(uint32_t pon_port, db_handle **db_out)
{
    return get_view(pon_port, 0, BSP_CMD_VIEW_ONU_OPTICS, db_out, large_view, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_onu_optical_diag_data_all(db_handle **db_out)
{
    return get_view(0, 0, BSP_CMD_VIEW_ONU_OPTICS_ALL, db_out, large_view, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_onu_perf_stat_data_all(db_handle **db_out)
{
    return get_view(0, 0, BSP_CMD_VIEW_ONU_STATS_ALL, db_out, large_view, on(BSP_MSG_PON));
}

uint32_t bsp_pon_onu_get_configure(uint32_t pon_port, uint32_t onu_id, uint32_t *out)
{
    auto request = onu::request_to(BSP_CMD_ONU_CONFIG_WORD, pon_port, onu_id);
    return frame::get_block(*request, sizeof *request, offsetof(bsp_onu_msg, onu_word20), out, sizeof *out,
                            on(BSP_MSG_ONU_CFG, Failure::pass));
}

uint32_t bsp_pon_get_allonuinfo(char *text_out)
{
    return frame::get_text(*Request<bsp_pon_msg>{BSP_CMD_ALL_ONU_INFO}, frame::view_length,
                           offsetof(bsp_pon_msg_ext, ext_payload), text_out, on(BSP_MSG_PON, Failure::pass));
}

uint32_t bsp_pon_get_port_info(db_handle **db_out)
{
    return olt_view(BSP_CMD_VIEW_PORT_INFO, db_out, on(BSP_MSG_PON, Failure::pass));
}

uint32_t bsp_pon_get_basic_info(db_handle **db_out)
{
    return olt_view(BSP_CMD_VIEW_BASIC_INFO, db_out, on(BSP_MSG_PON, Failure::pass));
}
