// These operations control P2P forwarding between ONUs.
#include "frame/platform.h"

using frame::on;
using frame::Request;
using frame::Route;
using frame::set;

namespace
{

constexpr uint32_t config_size = 10;
constexpr uint32_t entry_size = 12;

// Sets a forwarding entry of either form. The entry that matches everything has no `arg108`.
FRAME_SHARED uint32_t set_entry(uint32_t pon_port, uint32_t arg108, uint32_t arg104, const void *entry,
                                Route route = on(BSP_MSG_PLAT))
{
    Request<bsp_plat_msg> request{BSP_CMD_P2P_ENTRY_SET, pon_port, 0};
    request->plat_arg108 = arg108;
    request->plat_arg104 = arg104;
    request.copy<entry_size>(&bsp_plat_msg::plat_data, entry);
    return set(*request, route);
}

} // namespace

uint32_t bsp_p2p_state_set(uint32_t first, uint32_t second, uint8_t state)
{
    Request<bsp_plat_msg> request{BSP_CMD_P2P_STATE_SET};
    request->plat_arg96 = first;
    request->plat_arg100 = second;
    request->plat_arg116 = state;
    return set(*request, on(BSP_MSG_PLAT));
}

uint32_t bsp_onu_p2p_own_port_set(uint32_t pon_port, uint32_t value)
{
    Request<bsp_plat_msg> request{BSP_CMD_P2P_OWN_PORT_SET, pon_port, 0};
    request->plat_arg116 = value;
    return set(*request, on(BSP_MSG_PLAT));
}

uint32_t bsp_onu_p2p_own_port_get(uint32_t pon_port, uint32_t *value)
{
    Request<bsp_plat_msg> request{BSP_CMD_P2P_OWN_PORT_GET, pon_port, 0};
    return frame::get_block(*request, offsetof(bsp_plat_msg, plat_arg116), value, sizeof *value, on(BSP_MSG_PLAT));
}

uint32_t bsp_pon_get_p2p_state(db_handle **db_out)
{
    uint32_t result;
    frame::get_text_database(*Request<bsp_plat_msg>{BSP_CMD_P2P_STATE_GET}, frame::whole<bsp_plat_msg>,
                             offsetof(bsp_plat_msg, plat_data), db_out, result, on(BSP_MSG_PLAT));
    return result;
}

uint32_t bsp_p2p_entry_set(uint32_t pon_port, uint32_t arg108, uint32_t arg104, const void *entry)
{
    return set_entry(pon_port, arg108, arg104, entry);
}

uint32_t bsp_p2p_entry_set_matchall(uint32_t pon_port, uint32_t arg104, const void *entry)
{
    return set_entry(pon_port, 0, arg104, entry);
}

uint32_t bsp_p2p_cfg_set(uint32_t pon_port, uint32_t arg108, const void *cfg)
{
    return frame::set_platform_words(pon_port, 0, cfg, {BSP_CMD_P2P_CFG_SET, config_size}, arg108, 0);
}
