// These operations say which firmware goes to which kind of ONU, and control upgrade runs.
#include "frame/view.h"

using frame::on;
using frame::Request;
using frame::Route;

namespace
{

constexpr uint32_t block_size = 400;

FRAME_SHARED uint32_t send(uint32_t command, const void *block, Route route = on(BSP_MSG_UPGRADE))
{
    Request<bsp_pon_msg_ext> request{command};
    request.copy<block_size>(&bsp_pon_msg_ext::ext_payload, block);
    return frame::set(*request, route);
}

} // namespace

uint32_t bsp_pon_set_onu_upgrade_type_add(const void *block)
{
    return send(BSP_CMD_UPGRADE_TYPE_ADD, block);
}

uint32_t bsp_pon_set_onu_upgrade_type_del(const void *block)
{
    return send(BSP_CMD_UPGRADE_TYPE_DELETE, block);
}

uint32_t bsp_pon_get_onu_upgrade_type(db_handle **db_out)
{
    return frame::get_view_of_all(BSP_CMD_UPGRADE_TYPE_LIST, db_out, on(BSP_MSG_UPGRADE));
}

uint32_t bsp_pon_load_onu_upgrade_type_file(const void *block)
{
    return send(BSP_CMD_UPGRADE_TYPE_LOAD, block);
}

uint32_t bsp_pon_onu_upgrade_type_bind_some(const void *block)
{
    return send(BSP_CMD_UPGRADE_TYPE_BIND_ONUS, block);
}

uint32_t bsp_pon_onu_upgrade_type_bind_ponport(const void *block)
{
    return send(BSP_CMD_UPGRADE_TYPE_BIND_PORT, block);
}

uint32_t bsp_pon_onu_upgrade_one(const void *block)
{
    return send(BSP_CMD_UPGRADE_ONU, block);
}

uint32_t bsp_pon_onu_upgrade_ponport(const void *block)
{
    return send(BSP_CMD_UPGRADE_PORT, block);
}
