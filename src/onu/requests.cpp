// These operations query or configure an ONU over its OAM link by a command code and a block. Three of them are general
// requests. The others have a fixed code and go through the general ones.
#include "frame/onu.h"

using frame::on;

uint32_t bsp_pon_onu_ctc_get_info(uint32_t pon_port, uint32_t onu_id, uint32_t cmd, void *out, uint32_t out_len)
{
    return frame::ask_onu_if_wanted(pon_port, onu_id, 0, out, BSP_MSG_ONU_INFO, cmd, out_len);
}

uint32_t bsp_pon_onu_ctc_set_info(uint32_t pon_port, uint32_t onu_id, uint32_t cmd, const void *data, uint32_t data_len)
{
    return frame::set_onu(pon_port, onu_id, cmd, data, data_len, 0, frame::silently_on(BSP_MSG_ONU_INFO));
}

uint32_t bsp_pon_onu_ctc_port_get(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, uint32_t cmd, void *out,
                                  const uint32_t *out_len)
{
    if (!out) return BSP_ERR_PARAM;
    auto request = frame::request_to_onu(cmd, pon_port, onu_id, uni_port);
    frame::Response response;
    uint32_t result;
    if (response.receive(&*request, sizeof *request, frame::whole<bsp_onu_msg>, result,
                         on(BSP_MSG_ONU_INFO, frame::ErrorPolicy::pass)))
        response.copy(sizeof *request, frame::onu_data_offset, out, *out_len); // `out_len` is read only after the
                                                                               // exchange
    return result;
}

uint32_t bsp_pon_onu_ctc_get_sn(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_SN_GET, 54});
}

uint32_t bsp_pon_onu_ctc_get_fw(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_FW_GET, 128});
}

uint32_t bsp_pon_onu_ctc_get_chipid(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_CHIP_ID_GET, 8});
}

uint32_t bsp_pon_onu_ctc_get_cap(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_CAP_GET, 26});
}

uint32_t bsp_pon_onu_ctc_get_cap2(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_CAP2_GET, 64});
}

uint32_t bsp_pon_onu_ctc_get_sla(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_SLA_GET, 88});
}

uint32_t bsp_pon_onu_ctc_get_onuinfo(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_ABOUT_GET, 8058});
}

uint32_t bsp_pon_onu_ctc_get_upgrade_status(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_IMAGE_STATUS_GET, 20});
}

uint32_t bsp_pon_onu_ctc_get_catv_status(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_CATV_STATE_GET, 1});
}

uint32_t bsp_pon_onu_ctc_upgrade(uint32_t pon_port, uint32_t onu_id, const void *data, uint32_t data_len)
{
    return bsp_pon_onu_ctc_set_info(pon_port, onu_id, BSP_CMD_ONU_IMAGE_WRITE, data, data_len);
}

uint32_t bsp_pon_onu_ctc_upgrade_commit(uint32_t pon_port, uint32_t onu_id)
{
    return bsp_pon_onu_ctc_set_info(pon_port, onu_id, BSP_CMD_ONU_IMAGE_COMMIT, nullptr, 0);
}

// The UNI port is not written to the record, on purpose: the request is that of the CATV port.
uint32_t bsp_pon_onu_ctc_set_perf_monitor_status(uint32_t pon_port, uint32_t onu_id, uint16_t, uint8_t enable)
{
    return bsp_pon_onu_ctc_set_info(pon_port, onu_id, BSP_CMD_ONU_PERF_MONITOR_SET, &enable, sizeof enable);
}

uint32_t bsp_pon_onu_ctc_set_catv(uint32_t pon_port, uint32_t onu_id, uint8_t value)
{
    return bsp_pon_onu_ctc_set_info(pon_port, onu_id, BSP_CMD_ONU_CATV_SET, &value, sizeof value);
}

uint32_t bsp_onu_ctc_get_autoneg_local_abt(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out,
                                           const uint32_t *out_len)
{
    return bsp_pon_onu_ctc_port_get(pon_port, onu_id, uni_port, BSP_CMD_ONU_AUTONEG_LOCAL_GET, out, out_len);
}

uint32_t bsp_onu_ctc_get_autoneg_adv_abt(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out,
                                         const uint32_t *out_len)
{
    return bsp_pon_onu_ctc_port_get(pon_port, onu_id, uni_port, BSP_CMD_ONU_AUTONEG_ADV_GET, out, out_len);
}

uint32_t bsp_onu_ctc_get_phyinfo(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out,
                                 const uint32_t *out_len)
{
    return bsp_pon_onu_ctc_port_get(pon_port, onu_id, uni_port, BSP_CMD_ONU_PHY_INFO_GET, out, out_len);
}

uint32_t bsp_onu_ctc_get_perf_monitor_status(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out,
                                             const uint32_t *out_len)
{
    return bsp_pon_onu_ctc_port_get(pon_port, onu_id, uni_port, BSP_CMD_ONU_PERF_MONITOR_GET, out, out_len);
}

uint32_t bsp_onu_ctc_get_perf_current_data(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out,
                                           const uint32_t *out_len)
{
    return bsp_pon_onu_ctc_port_get(pon_port, onu_id, uni_port, BSP_CMD_ONU_PERF_CURRENT_GET, out, out_len);
}

uint32_t bsp_onu_ctc_get_perf_history_data(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out,
                                           const uint32_t *out_len)
{
    return bsp_pon_onu_ctc_port_get(pon_port, onu_id, uni_port, BSP_CMD_ONU_PERF_HISTORY_GET, out, out_len);
}
