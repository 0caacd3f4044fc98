// Diagnostics of the OLT's optics.
#include "frame/exchange.h"
#include "frame/request.h"

using frame::Request;
using frame::Site;

namespace
{

constexpr uint32_t diag_size = 56;
constexpr uint32_t rssi_size = 64;
constexpr uint32_t sfp_size = 464;
constexpr uint32_t status_size = 32;

// The first `size` bytes of the answer's data.
FRAME_SHARED uint32_t read(uint32_t command, uint32_t port, uint32_t id, uint32_t sel, void *out, uint32_t size,
                           Site site = Site::here())
{
    Request<bsp_plat_msg> request{command};
    request->plat_port = port;
    request->plat_arg4 = id;
    request->plat_arg120 = sel;
    return frame::get_block(BSP_MSG_PLAT, *request, sizeof *request, offsetof(bsp_plat_msg, plat_data), out, size,
                            site);
}

} // namespace

uint32_t bsp_om_plat_diag_get(uint32_t pon_port, void *out)
{
    return read(BSP_CMD_OPTICS_DIAG_GET, pon_port, 0, 0, out, diag_size);
}

uint32_t bsp_om_plat_diag_rssi_get(uint32_t pon_port, uint32_t id, uint32_t sel, void *out)
{
    return read(BSP_CMD_OPTICS_RSSI_GET, pon_port, id, sel, out, rssi_size);
}

uint32_t bsp_sfp_diag_info_get(uint32_t port, void *out)
{
    return read(BSP_CMD_SFP_INFO_GET, port, 0, 0, out, sfp_size);
}

uint32_t bsp_sfp_diag_info_get_json(uint32_t port, db_handle **db_out)
{
    const uint32_t command = BSP_CMD_VIEW_SFP_INFO;
    Request<bsp_plat_msg> request{command};
    request->plat_port = port;
    return frame::get_database(BSP_MSG_PLAT, *request, sizeof *request, command, frame::small_view, db_out);
}

uint32_t bsp_debug_8022_optical_status(uint32_t pon_port, uint32_t, const void *status)
{
    Request<bsp_plat_msg> request{BSP_CMD_OPTICS_STATUS_SET};
    request->plat_port = pon_port;
    request.copy<status_size>(&bsp_plat_msg::plat_data, status);
    return frame::set(BSP_MSG_PLAT, *request);
}
