// These operations send any command of the platform channel, and PON settings, in records that the caller built.
#include "frame/exchange.h"

using frame::on;

namespace
{

// The command code that stands in the answer names the result.
FRAME_SHARED uint32_t get_in_place_database(void *record, uint32_t length, const uint32_t &key, db_handle **db_out,
                                            frame::Route route)
{
    uint32_t received = length;
    uint32_t status = BSP_OK;
    const int32_t ipc_result =
        ipc_get_exec(BSP_IPC_MODULE, route.channel(), record, length, record, &received, &status);
    if (ipc_result) return frame::failed(ipc_result, route);
    *db_out = db_from_shmem(key, frame::small_view);
    return status;
}

} // namespace

uint32_t plat_bsp_funcset(const bsp_plat_msg *record)
{
    return frame::set(*record, on(BSP_MSG_PLAT));
}

uint32_t plat_bsp_funcget(bsp_plat_msg *record)
{
    return frame::get_in_place(*record, on(BSP_MSG_PLAT));
}

uint32_t plat_bsp_funcget_json(bsp_plat_msg *record, db_handle **db_out)
{
    return get_in_place_database(record, sizeof *record, record->plat_cmd, db_out, on(BSP_MSG_PLAT));
}

uint32_t bsp_poncfg_set(const bsp_pon_msg *record)
{
    return frame::set(*record, on(BSP_MSG_PLAT));
}

uint32_t bsp_poncfg_get(bsp_pon_msg *record)
{
    return frame::get_in_place(*record, on(BSP_MSG_PLAT));
}

uint32_t bsp_poncfg_funcget_json(bsp_pon_msg *record, db_handle **db_out)
{
    return get_in_place_database(record, sizeof *record, record->cmd, db_out, on(BSP_MSG_PON));
}
