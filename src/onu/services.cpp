// These operations return views of what an ONU does for its users, as result databases. They also read FEC and the
// ONU's time.
#include "frame/onu.h"
#include "frame/view.h"

using frame::ErrorPolicy;
using frame::get_view;
using frame::large_view;
using frame::on;
using frame::small_view;

uint32_t bsp_pon_onu_ctc_get_mc_config_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_MC_CONFIG, db_out, on(BSP_MSG_ONU_CFG));
}

uint32_t bsp_pon_onu_uni_ctc_get_mc_config_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_UNI_MC_CONFIG, db_out, on(BSP_MSG_ONU_CFG));
}

uint32_t bsp_pon_onu_ctc_get_mc_vlan_translate_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id,
                                                    uint8_t byte_arg)
{
    return frame::get_part_of_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_MC_TRANSLATION, db_out, on(BSP_MSG_ONU_CFG),
                                       byte_arg, 0);
}

uint32_t bsp_pon_onu_ctc_get_mc_vlan_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_MC_VLAN, db_out, on(BSP_MSG_ONU_CFG));
}

uint32_t bsp_pon_onu_ctc_get_voipinfo_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_VOIP, db_out, on(BSP_MSG_ONU_CFG));
}

uint32_t bsp_pon_onu_get_fec_mode(uint32_t pon_port, uint32_t onu_id, uint32_t *out)
{
    return frame::ask_onu_unchecked(pon_port, onu_id, 0, out, {BSP_CMD_ONU_FEC_GET, sizeof *out},
                                    frame::silently_on(BSP_MSG_ONU_CFG));
}

// The ability is stored in the word behind the mode, so that a caller can keep both side by side.
uint32_t bsp_pon_onuc_get_fec_ability(uint32_t pon_port, uint32_t onu_id, uint32_t *out)
{
    return frame::ask_onu_unchecked(pon_port, onu_id, 0, out + 1, {BSP_CMD_ONU_FEC_ABILITY_GET, sizeof *out},
                                    frame::silently_on(BSP_MSG_ONU_CFG));
}

uint32_t bsp_pon_onu_ctc_get_time_config(uint32_t pon_port, uint32_t onu_id, void *out)
{
    if (!out) return BSP_ERR_PARAM;
    return frame::ask_onu_unchecked(pon_port, onu_id, 0, out, {BSP_CMD_ONU_TIME_GET, 16},
                                    on(BSP_MSG_ONU_INFO, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_wanc(uint32_t pon_port, uint32_t onu_id, uint32_t index, db_handle **db_out)
{
    return frame::get_part_of_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_WAN, db_out,
                                       on(BSP_MSG_ONU_CFG, ErrorPolicy::pass), 0, index);
}

uint32_t bsp_pon_onu_ctc_get_wlan(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_WLAN, db_out, on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_catv(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_CATV, db_out, on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_acl(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_ACL, db_out, on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_dhcp(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return frame::get_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_DHCP, db_out, on(BSP_MSG_ONU_CFG, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_wlantab(uint32_t pon_port, db_handle **db_out)
{
    return get_view(pon_port, 0, {BSP_CMD_VIEW_ONU_WLAN_TABLE, small_view}, db_out, on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_wanctab(uint32_t pon_port, db_handle **db_out)
{
    return get_view(pon_port, 0, {BSP_CMD_VIEW_ONU_WAN_TABLE, small_view}, db_out, on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_catvtab(uint32_t pon_port, db_handle **db_out)
{
    return get_view(pon_port, 0, {BSP_CMD_VIEW_ONU_CATV_TABLE, large_view}, db_out, on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_sipusertab(uint32_t pon_port, db_handle **db_out)
{
    return get_view(pon_port, 0, {BSP_CMD_VIEW_ONU_SIP_TABLE, large_view}, db_out, on(BSP_MSG_PON, ErrorPolicy::pass));
}

uint32_t bsp_pon_onu_ctc_get_upgradestatus_json(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return get_view(pon_port, onu_id, {BSP_CMD_VIEW_ONU_UPGRADE_STATUS, large_view}, db_out,
                    on(BSP_MSG_PON, ErrorPolicy::pass));
}
