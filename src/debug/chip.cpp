// These operations give engineers the counters, registers, laser and I2C bus of the PON chip and of the board's
// interfaces. They also set MPCP and deregister ONUs.
#include "board/util.h"
#include "frame/platform.h"

using frame::on;
using frame::Request;
using frame::Route;
using frame::set;

namespace
{

constexpr uint32_t i2c_size = 144;
constexpr uint32_t mpcp_size = 32;

FRAME_SHARED uint32_t switch_output(uint32_t command, uint32_t first, uint32_t second, Route route = on(BSP_MSG_DEBUG))
{
    Request<bsp_plat_msg> request{command};
    request->plat_arg116 = first;
    request->plat_arg120 = second;
    return set(*request, route);
}

} // namespace

uint32_t bsp_debug_8022_pon_stats(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_PON_STATS, 160}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_8022_ge_stats(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_GE_STATS, 160}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_ge_phy_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_GE_PHY_GET, 20}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_ingress_behavior_get(uint32_t port, uint32_t selector, void *out)
{
    return frame::get_platform(port, selector, out, {BSP_CMD_DEBUG_INGRESS_GET, 54}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_egress_behavior_get(uint32_t port, uint32_t selector, void *out)
{
    return frame::get_platform(port, selector, out, {BSP_CMD_DEBUG_EGRESS_GET, 8}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_pon_mac_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_PON_MAC_GET, 36}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_pon_phy_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_PON_PHY_GET, 12}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_pon_laser_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_PON_LASER_GET, 4}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_ge_mac_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_GE_MAC_GET, 22}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_xaui_mac_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_XAUI_MAC_GET, 28}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_xaui_phy_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_XAUI_PHY_GET, 12}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_mgmt_cfg_get(uint32_t port, void *out)
{
    return frame::get_platform(port, 0, out, {BSP_CMD_DEBUG_MGMT_CFG_GET, 4}, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_plat_ge_phy_set(uint32_t port, uint8_t value)
{
    Request<bsp_plat_msg> request{BSP_CMD_DEBUG_GE_PHY_SET, port, 0};
    request->plat_data[0] = value;
    return set(*request, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_8022_i2c_read(uint32_t port, void *buf)
{
    Request<bsp_plat_msg> request{BSP_CMD_DEBUG_I2C_READ, port, 0};
    request.copy<i2c_size>(&bsp_plat_msg::plat_data, buf);
    return frame::get_block(*request, offsetof(bsp_plat_msg, plat_data), buf, i2c_size, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_8022_i2c_write(uint32_t port, uint32_t, const void *buf)
{
    Request<bsp_plat_msg> request{BSP_CMD_DEBUG_I2C_WRITE, port, 0};
    request.copy<i2c_size>(&bsp_plat_msg::plat_data, buf);
    return set(*request, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_cs8022_get_fdb(uint32_t selector, uint32_t port)
{
    Request<bsp_plat_msg> request{BSP_CMD_DEBUG_FDB_DUMP, port, 0};
    request->plat_arg120 = selector;
    return set(*request, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_ctc_oam(uint32_t first, uint32_t second)
{
    return switch_output(BSP_CMD_DEBUG_CTC_OAM, first, second);
}

uint32_t bsp_debug_onu_debug(uint32_t first, uint32_t second)
{
    return switch_output(BSP_CMD_DEBUG_ONU, first, second);
}

uint32_t bsp_debug_cs8022_set(const bsp_plat_msg *record)
{
    if (!record) return BSP_ERR_PARAM;
    return set(*record, on(BSP_MSG_DEBUG));
}

uint32_t bsp_debug_cs8022_get(const bsp_plat_msg *record, void *resp)
{
    if (!record || !resp) {
        userlog_debug(__func__, __LINE__, "param error");
        return BSP_ERR_PARAM;
    }
    return frame::get_into(*record, resp, sizeof *record, on(BSP_MSG_DEBUG, frame::ErrorPolicy::pass));
}

uint32_t bsp_debug_8022_mpcp_set(uint32_t pon_port, uint32_t value, const void *data)
{
    return frame::set_platform_words(pon_port, 0, data, {BSP_CMD_MPCP_SET, mpcp_size}, value, 0);
}

uint32_t bsp_8022_deregister_onu(uint32_t pon_port, uint32_t onu_id)
{
    return frame::set_platform(pon_port, onu_id, nullptr, {BSP_CMD_ONU_DEREGISTER, 0});
}

uint32_t bsp_8022_deregister_onu_state_register(uint32_t pon_port)
{
    return frame::set_platform(pon_port, 0, nullptr, {BSP_CMD_PORT_REREGISTER, 0});
}
