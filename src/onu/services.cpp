// Views of what an ONU does for its users, as result databases; FEC, and the ONU's time.
#include "onu/remote.h"

using frame::Failure;
using frame::Site;

namespace
{

// A view of one ONU.
template <Failure failure>
FRAME_SHARED uint32_t view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out,
                           uint32_t uni_port = 0, uint32_t index = 0, Site site = Site::here())
{
    auto request = onu::request_to(command, pon_port, onu_id, uni_port);
    request->onu_arg24 = index;
    return frame::get_database<failure>(BSP_MSG_ONU_CFG, *request, sizeof *request, command, frame::small_view, db_out,
                                        site);
}

// A view of the ONUs of a PON port.
FRAME_SHARED uint32_t table(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out,
                            uint32_t bound = frame::large_view, Site site = Site::here())
{
    frame::Request<bsp_pon_msg> request{command};
    request->pon_port = pon_port;
    request->onu_id = onu_id;
    return frame::get_database<Failure::pass>(BSP_MSG_PON, *request, sizeof *request, command, bound, db_out, site);
}

// One word of the answer's data.
FRAME_SHARED uint32_t word(uint32_t pon_port, uint32_t onu_id, uint32_t command, uint32_t *out)
{
    auto request = onu::request_to(command, pon_port, onu_id);
    return frame::get_block<Failure::silent>(BSP_MSG_ONU_CFG, *request, sizeof *request, onu::data_offset, out,
                                             sizeof *out);
}

} // namespace

uint32_t bsp_pon_onu_ctc_get_mc_config_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return view<Failure::report>(pon_port, onu_id, BSP_CMD_VIEW_ONU_MC_CONFIG, db_out);
}

uint32_t bsp_pon_onu_uni_ctc_get_mc_config_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return view<Failure::report>(pon_port, onu_id, BSP_CMD_VIEW_ONU_UNI_MC_CONFIG, db_out);
}

uint32_t bsp_pon_onu_ctc_get_mc_vlan_translate_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id,
                                                    uint8_t byte_arg)
{
    return view<Failure::report>(pon_port, onu_id, BSP_CMD_VIEW_ONU_MC_TRANSLATION, db_out, byte_arg);
}

uint32_t bsp_pon_onu_ctc_get_mc_vlan_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return view<Failure::report>(pon_port, onu_id, BSP_CMD_VIEW_ONU_MC_VLAN, db_out);
}

uint32_t bsp_pon_onu_ctc_get_voipinfo_json(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return view<Failure::report>(pon_port, onu_id, BSP_CMD_VIEW_ONU_VOIP, db_out);
}

uint32_t bsp_pon_onu_get_fec_mode(uint32_t pon_port, uint32_t onu_id, uint32_t *out)
{
    return word(pon_port, onu_id, BSP_CMD_ONU_FEC_GET, out);
}

// Behind the mode, so that a caller can keep both side by side.
uint32_t bsp_pon_onuc_get_fec_ability(uint32_t pon_port, uint32_t onu_id, uint32_t *out)
{
    return word(pon_port, onu_id, BSP_CMD_ONU_FEC_ABILITY_GET, out + 1);
}

uint32_t bsp_pon_onu_ctc_get_time_config(uint32_t pon_port, uint32_t onu_id, void *out)
{
    return onu::ask_logged(pon_port, onu_id, 0, out, BSP_MSG_ONU_INFO, {BSP_CMD_ONU_TIME_GET, 16});
}

uint32_t bsp_pon_onu_ctc_get_wanc(uint32_t pon_port, uint32_t onu_id, uint32_t index, db_handle **db_out)
{
    return view<Failure::pass>(pon_port, onu_id, BSP_CMD_VIEW_ONU_WAN, db_out, 0, index);
}

uint32_t bsp_pon_onu_ctc_get_wlan(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return view<Failure::pass>(pon_port, onu_id, BSP_CMD_VIEW_ONU_WLAN, db_out);
}

uint32_t bsp_pon_onu_ctc_get_catv(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return view<Failure::pass>(pon_port, onu_id, BSP_CMD_VIEW_ONU_CATV, db_out);
}

uint32_t bsp_pon_onu_ctc_get_acl(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return view<Failure::pass>(pon_port, onu_id, BSP_CMD_VIEW_ONU_ACL, db_out);
}

uint32_t bsp_pon_onu_ctc_get_dhcp(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return view<Failure::pass>(pon_port, onu_id, BSP_CMD_VIEW_ONU_DHCP, db_out);
}

uint32_t bsp_pon_onu_ctc_get_wlantab(uint32_t pon_port, db_handle **db_out)
{
    return table(pon_port, 0, BSP_CMD_VIEW_ONU_WLAN_TABLE, db_out, frame::small_view);
}

uint32_t bsp_pon_onu_ctc_get_wanctab(uint32_t pon_port, db_handle **db_out)
{
    return table(pon_port, 0, BSP_CMD_VIEW_ONU_WAN_TABLE, db_out, frame::small_view);
}

uint32_t bsp_pon_onu_ctc_get_catvtab(uint32_t pon_port, db_handle **db_out)
{
    return table(pon_port, 0, BSP_CMD_VIEW_ONU_CATV_TABLE, db_out);
}

uint32_t bsp_pon_onu_ctc_get_sipusertab(uint32_t pon_port, db_handle **db_out)
{
    return table(pon_port, 0, BSP_CMD_VIEW_ONU_SIP_TABLE, db_out);
}

uint32_t bsp_pon_onu_ctc_get_upgradestatus_json(uint32_t pon_port, uint32_t onu_id, db_handle **db_out)
{
    return table(pon_port, onu_id, BSP_CMD_VIEW_ONU_UPGRADE_STATUS, db_out);
}
