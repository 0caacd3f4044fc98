// These operations read the diagnostics of the OLT's optics.
#include "frame/platform.h"

using frame::on;
using frame::Request;

namespace
{

constexpr uint32_t diag_size = 56;
constexpr uint32_t rssi_size = 64;
constexpr uint32_t sfp_size = 464;
constexpr uint32_t status_size = 32;

} // namespace

uint32_t bsp_om_plat_diag_get(uint32_t pon_port, void *out)
{
    return frame::get_platform(pon_port, 0, out, {BSP_CMD_OPTICS_DIAG_GET, diag_size}, on(BSP_MSG_PLAT));
}

uint32_t bsp_om_plat_diag_rssi_get(uint32_t pon_port, uint32_t id, uint32_t sel, void *out)
{
    Request<bsp_plat_msg> request{BSP_CMD_OPTICS_RSSI_GET, pon_port, id};
    request->plat_arg120 = sel;
    return frame::get_block(*request, offsetof(bsp_plat_msg, plat_data), out, rssi_size, on(BSP_MSG_PLAT));
}

uint32_t bsp_sfp_diag_info_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_SFP_INFO_GET, sfp_size}, on(BSP_MSG_PLAT));
}

uint32_t bsp_sfp_diag_info_get_json(uint32_t port, db_handle **db_out)
{
    const uint32_t command = BSP_CMD_VIEW_SFP_INFO;
    Request<bsp_plat_msg> request{command, port, 0};
    return frame::get_database(*request, frame::whole<bsp_plat_msg>, command, frame::small_view, db_out,
                               on(BSP_MSG_PLAT));
}

uint32_t bsp_debug_8022_optical_status(uint32_t pon_port, uint32_t, const void *status)
{
    return frame::set_platform(pon_port, 0, status, {BSP_CMD_OPTICS_STATUS_SET, status_size});
}
