// These operations set the configuration of ONUs, LOIDs and the OUI, the ARP table, UNI profiles and the batch.
#include "board/util.h"
#include "frame/send.h"
#include "frame/view.h"

using frame::ErrorPolicy;
using frame::on;
using frame::Request;

namespace
{

constexpr uint32_t oui_size = 3;

} // namespace

uint32_t bsp_onu_ctc_set_cfg(bsp_onu_msg *rec)
{
    return frame::send_stamped(rec, BSP_CMD_ONU_CONFIG_SET, on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_set_oui(const uint8_t *oui)
{
    if (!oui) return BSP_ERR_PARAM;
    return frame::send(0, 0, BSP_CMD_OUI_SET, nullptr, on(BSP_MSG_PON, ErrorPolicy::pass), 0, oui, oui_size);
}

uint32_t bsp_pon_onu_ctc_add_loid(bsp_pon_msg *rec)
{
    return frame::send_stamped(rec, BSP_CMD_LOID_ADD, on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_delete_loid(bsp_pon_msg *rec)
{
    return frame::send_stamped(rec, BSP_CMD_LOID_DELETE, on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_pon_get_onu_loidlist(uint32_t pon_port, db_handle **db_out)
{
    return frame::get_view(pon_port, 0, {BSP_CMD_VIEW_LOID_LIST, frame::large_view}, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_arptable(uint32_t pon_port, db_handle **db_out)
{
    Request<bsp_pon_msg> request{BSP_CMD_ARP_TABLE, pon_port, 0};
    frame::Response response;
    uint32_t result;
    if (response.receive(&*request, sizeof *request, frame::whole<bsp_pon_msg>, result, on(BSP_MSG_PON))) {
        const char *name = response.text(sizeof *request, offsetof(bsp_pon_msg, data429));
        *db_out = db_create_fromfile(name);
        delete_file(name);
    }
    return result;
}

uint32_t bsp_pon_prof_uni_set(uint32_t profile_id, uint16_t value, const void *body, uint32_t body_len)
{
    return frame::send(profile_id, 0, BSP_CMD_UNI_PROFILE_SET, nullptr, on(BSP_MSG_PON, ErrorPolicy::pass), value, body,
                       body_len);
}

uint32_t bsp_pon_prof_uni_get(uint32_t profile_id, db_handle **db_out)
{
    return frame::get_view(profile_id, 0, {BSP_CMD_VIEW_UNI_PROFILE, frame::small_view}, db_out,
                           on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_onu_ctc_set_portcfg(bsp_onu_msg *rec)
{
    return frame::send_stamped(rec, BSP_CMD_ONU_PORT_CONFIG_SET, on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onucfg_set_batch(uint32_t)
{
    return frame::send(0, 0, BSP_CMD_ONU_CONFIG_BATCH, nullptr, on(BSP_MSG_PON, ErrorPolicy::pass));
}
