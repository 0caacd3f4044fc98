// These operations manage the OLT's forwarding database (FDB) and its MAC tables.
#include "frame/platform.h"

using frame::on;
using frame::Request;
using frame::Route;

namespace
{

constexpr uint32_t config_size = 12;
constexpr uint32_t filter_size = 16;
constexpr uint32_t query_size = 92;

FRAME_SHARED uint32_t look_up(uint32_t command, const void *query, uint32_t *result_word,
                              Route route = on(BSP_MSG_PLAT))
{
    Request<bsp_plat_msg> request{command};
    request.copy<query_size>(&bsp_plat_msg::plat_data, query);
    return frame::get_block(*request, offsetof(bsp_plat_msg, plat_arg120), result_word, sizeof *result_word, route);
}

} // namespace

uint32_t bsp_pon_plat_fdb_cfg_set(const void *cfg)
{
    return frame::set_platform(0, 0, cfg, {BSP_CMD_FDB_CFG_SET, config_size});
}

uint32_t bsp_pon_plat_fdb_flush(const void *filter)
{
    return frame::set_platform(0, 0, filter, {BSP_CMD_FDB_FLUSH, filter_size});
}

uint32_t bsp_pon_plat_mac_age_get(uint32_t *first, uint32_t *second)
{
    Request<bsp_plat_msg> request{BSP_CMD_MAC_AGE_GET};
    frame::Response response;
    uint32_t result;
    if (response.receive(&*request, sizeof *request, frame::whole<bsp_plat_msg>, result, on(BSP_MSG_PLAT))) {
        *first = response.word(offsetof(bsp_plat_msg, plat_arg120));
        *second = response.word(offsetof(bsp_plat_msg, plat_arg112));
    }
    return result;
}

uint32_t bsp_pon_plat_mac_get(const void *query, uint32_t *result)
{
    return look_up(BSP_CMD_MAC_GET, query, result);
}

uint32_t bsp_pon_plat_mac_nni_get(const void *query, uint32_t *result)
{
    return look_up(BSP_CMD_MAC_NNI_GET, query, result);
}
