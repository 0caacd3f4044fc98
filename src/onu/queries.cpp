// These operations query an ONU over its OAM link, and read what the OLT has of its configuration, as blocks and
// tables.
#include "board/util.h"
#include "frame/onu.h"

using frame::ErrorPolicy;
using frame::on;

namespace
{

constexpr uint32_t whole_data = 8058; // more bytes than an answer holds

} // namespace

uint32_t bsp_pon_onu_get_uniobj_snmp(uint32_t pon_port, uint32_t onu_id, db_handle **out)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_UNI_SNMP, out, on(BSP_MSG_ONU_CFG));
}

uint32_t bsp_pon_onu_ctc_autoneg_get(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out)
{
    if (!out) return BSP_ERR_PARAM;
    return frame::ask_onu_if_wanted(pon_port, onu_id, uni_port, out, BSP_MSG_ONU_INFO, BSP_CMD_ONU_AUTONEG_GET, 4);
}

uint32_t bsp_pon_onu_ctc_phy_adminstate_get(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out)
{
    if (!out) return BSP_ERR_PARAM;
    return frame::ask_onu_if_wanted(pon_port, onu_id, uni_port, out, BSP_MSG_ONU_INFO, BSP_CMD_ONU_ADMIN_STATE_GET, 4);
}

uint32_t bsp_pon_onu_ctc_classification_get(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out)
{
    return frame::ask_onu_if_wanted(pon_port, onu_id, uni_port, out, BSP_MSG_ONU_INFO, BSP_CMD_ONU_CLASSIFICATION_GET,
                                    298);
}

uint32_t bsp_pon_onu_ctc_get_dev_info(uint32_t pon_port, uint32_t onu_id, void *out)
{
    if (!out) return BSP_ERR_PARAM;
    return frame::ask_onu_unchecked(pon_port, onu_id, 0, out, {BSP_CMD_ONU_DEVICE_INFO_GET, whole_data},
                                    on(BSP_MSG_ONU_CFG, ErrorPolicy::pass), frame::unoffered<bsp_onu_msg>);
}

uint32_t bsp_pon_onu_get_max_port(uint32_t pon_port, uint32_t onu_id, uint16_t *out)
{
    if (!out) return BSP_ERR_PARAM;
    auto request = frame::request_to_onu(BSP_CMD_ONU_MAX_PORT_GET, pon_port, onu_id);
    frame::Response response;
    uint32_t result;
    if (response.receive(&*request, sizeof *request, frame::unoffered<bsp_onu_msg>, result,
                         on(BSP_MSG_ONU_CFG, ErrorPolicy::pass)))
        *out = response.byte(offsetof(bsp_onu_msg, onu_uni_port));
    return result;
}

uint32_t bsp_pon_onu_ctc_get_vlan(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_VLAN_GET, 159});
}

uint32_t bsp_pon_tk_onu_get_fw(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_BANKS_GET, 64});
}

uint32_t bsp_pon_onu_ctc_get_mem_info(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_about_onu(pon_port, onu_id, out, {BSP_CMD_ONU_MEM_INFO_GET, whole_data});
}

uint32_t bsp_pon_onu_ctc_get_rate_limit(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_RATE_LIMIT_GET, 22});
}

uint32_t bsp_pon_onu_ctc_get_loop_detect(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out)
{
    if (!out) return BSP_ERR_PARAM;
    return frame::ask_onu_unchecked(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_LOOP_DETECT_GET, 8},
                                    on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_mgmt(uint32_t pon_port, uint32_t onu_id, void *out)
{
    if (!out) return BSP_ERR_PARAM;
    return frame::ask_onu_unchecked(pon_port, onu_id, 0, out, {BSP_CMD_ONU_MGMT_GET, 17},
                                    on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_linkstate(uint32_t pon_port, uint32_t onu_id, db_handle **out)
{
    if (!out) return BSP_ERR_PARAM;
    auto request = frame::request_to_onu(BSP_CMD_ONU_LINK_STATE_GET, pon_port, onu_id);
    frame::Response response;
    uint32_t result;
    if (response.receive(&*request, sizeof *request, frame::whole<bsp_onu_msg>, result,
                         on(BSP_MSG_ONU_CFG).by_datagram())) {
        const char *text = response.text(sizeof *request, frame::onu_data_offset);
        userlog_err(__func__, __LINE__, "filename=%s", text); // logged as an error on purpose
        *out = db_from_string(text);
    }
    return result;
}

uint32_t bsp_pon_onu_ctc_get_eth_pause(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, uint8_t *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_PAUSE_GET, 1});
}

uint32_t bsp_pon_onu_ctc_get_fast_leave_ability(uint32_t pon_port, uint32_t onu_id, void *out)
{
    if (!out) return BSP_ERR_PARAM;
    return frame::ask_onu_config(pon_port, onu_id, static_cast<uint8_t *>(out) + 4,
                                 {BSP_CMD_ONU_FAST_LEAVE_ABILITY_GET, 28});
}

uint32_t bsp_pon_onu_ctc_get_fast_leave(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, out, {BSP_CMD_ONU_FAST_LEAVE_GET, 4});
}

uint32_t bsp_pon_onu_ctc_get_fast_leave_local(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, out, {BSP_CMD_ONU_FAST_LEAVE_LOCAL_GET, 32});
}

uint32_t bsp_pon_onu_ctc_get_mc_switch_remote(uint32_t pon_port, uint32_t onu_id, uint8_t *out)
{
    return frame::ask_onu_config(pon_port, onu_id, out, {BSP_CMD_ONU_MC_SWITCH_GET, 1});
}

uint32_t bsp_pon_onu_ctc_get_mc_switch_local(uint32_t pon_port, uint32_t onu_id, uint8_t *out)
{
    return frame::ask_onu_config(pon_port, onu_id, out, {BSP_CMD_ONU_MC_SWITCH_LOCAL_GET, 1});
}

uint32_t bsp_pon_onu_ctc_get_mc_group_num_max_remote(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_MC_GROUP_MAX_GET, 2});
}

uint32_t bsp_pon_onu_ctc_get_mc_group_num_max_local(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_MC_GROUP_MAX_LOCAL_GET, 2});
}

uint32_t bsp_pon_onu_ctc_get_mc_vlan_mode_remote(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_MC_VLAN_MODE_GET, 34});
}

uint32_t bsp_pon_onu_ctc_get_mc_vlan_mode_local(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_MC_VLAN_MODE_LOCAL_GET, 34});
}

uint32_t bsp_pon_onu_ctc_get_mc_vlan_remote(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_MC_VLAN_GET, 18});
}

uint32_t bsp_pon_onu_ctc_get_mc_vlan_local(uint32_t pon_port, uint32_t onu_id, uint8_t uni_port, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, uni_port, out, {BSP_CMD_ONU_MC_VLAN_LOCAL_GET, 16});
}

uint32_t bsp_pon_onu_ctc_get_mc_group(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return frame::ask_onu_config(pon_port, onu_id, out, {BSP_CMD_ONU_MC_GROUP_GET, 1284});
}

uint32_t bsp_pon_onu_ctc_get_sn_ponport(uint32_t pon_port, db_handle **out)
{
    return frame::get_onu_view(pon_port, 0, BSP_CMD_VIEW_ONU_SN, out, on(BSP_MSG_ONU_OAM));
}

uint32_t bsp_pon_onu_ctc_debug_get(bsp_onu_msg *msg)
{
    if (!msg) return BSP_ERR_PARAM;
    return frame::get_in_place(*msg, on(BSP_MSG_ONU_INFO, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_config_get(bsp_onu_msg *msg)
{
    if (!msg) return BSP_ERR_PARAM;
    return frame::get_in_place(*msg, on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_optical_diagnose_get(bsp_onu_msg *msg)
{
    msg->onu_cmd = BSP_CMD_ONU_OPTICS_GET;
    return bsp_pon_onu_ctc_config_get(msg);
}

uint32_t bsp_pon_onu_ctc_get_vlan_json(db_handle **result, uint32_t pon_port, uint32_t onu_id)
{
    return frame::get_stored_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_VLAN, result);
}

uint32_t bsp_pon_onu_ctc_get_vlan_mode_json(db_handle **result, uint32_t pon_port, uint32_t onu_id)
{
    return frame::get_stored_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_VLAN, result);
}
