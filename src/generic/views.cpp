// These operations return the views that the service keeps, as result databases. A view that has a function of its own
// goes through one of the generic queries.
#include "frame/onu.h"
#include "frame/send.h"
#include "frame/view.h"

using frame::on;
using frame::Request;

namespace
{

FRAME_SHARED uint32_t onu_view_of_all(uint32_t command, db_handle **db_out)
{
    return bsp_pononu_ctc_config_snmp_get(db_out, &*Request<bsp_onu_msg>{command});
}

} // namespace

uint32_t bsp_pon_config_by_db(db_handle **db_out, const bsp_pon_msg *record)
{
    return frame::get_database(*record, frame::view_room, record->cmd, frame::large_view, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pononu_ctc_config_by_db(db_handle **db_out, const bsp_onu_msg *record)
{
    return frame::get_database(*record, frame::view_room, record->onu_cmd, frame::small_view, db_out,
                               on(BSP_MSG_ONU_CFG));
}

uint32_t bsp_pon_platform_by_db(db_handle **db_out, const bsp_plat_msg *record)
{
    return frame::get_database(*record, frame::view_room, record->plat_cmd, frame::small_view, db_out,
                               on(BSP_MSG_PLAT));
}

uint32_t bsp_pon_get_onu_info(db_handle **db_out, bsp_pon_msg *record)
{
    record->cmd = BSP_CMD_ONU_INFO_GET;
    frame::Response response;
    uint32_t result;
    if (response.receive(record, sizeof *record, frame::whole<bsp_pon_msg>, result, on(BSP_MSG_PON).by_datagram()))
        *db_out = db_from_shmem(BSP_CMD_ONU_INFO_GET, frame::large_view);
    return result;
}

uint32_t bsp_pon_get_onu_info_snmp(db_handle **db_out)
{
    return frame::get_stored_view(BSP_CMD_VIEW_ONU_INFO_SNMP, db_out);
}

uint32_t bsp_pon_get_onu_info_web(db_handle **db_out, bsp_pon_msg *record)
{
    return frame::get_stored_view(BSP_CMD_VIEW_ONU_INFO_WEB, db_out, record);
}

uint32_t bsp_pon_get_onu_cap_snmp(db_handle **db_out)
{
    return frame::get_stored_view(BSP_CMD_VIEW_ONU_CAP_SNMP, db_out);
}

uint32_t bsp_pon_get_base_info_web(db_handle **db_out, bsp_pon_msg *record)
{
    return frame::get_stored_view(BSP_CMD_VIEW_BASE_INFO_WEB, db_out, record);
}

uint32_t bsp_pon_get_upgrade_base_info_web(db_handle **db_out, bsp_pon_msg *record)
{
    return frame::get_stored_view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, db_out, record);
}

uint32_t bsp_pon_get_onu_alarm(db_handle **db_out, bsp_pon_msg *record)
{
    return frame::get_stored_view(BSP_CMD_VIEW_ONU_ALARM, db_out, record);
}

uint32_t bsp_pon_clear_onu_alarm(bsp_pon_msg *record)
{
    return frame::send_stamped(record, BSP_CMD_ONU_ALARM_CLEAR, on(BSP_MSG_PON, frame::ErrorPolicy::pass));
}

uint32_t bsp_pon_get_uni_attribute_snmp(db_handle **db_out)
{
    return frame::get_stored_view(BSP_CMD_VIEW_UNI_ATTRIBUTE_SNMP, db_out);
}

uint32_t bsp_pon_onu_get_cfg_info(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    Request<bsp_onu_msg> request{BSP_CMD_VIEW_ONU_CONFIG, pon_port, onu_id};
    uint32_t result;
    const bool answered =
        frame::get_text_database(*request, frame::unoffered<bsp_onu_msg>, offsetof(bsp_pon_msg_ext, ext_payload),
                                 db_out, result, on(BSP_MSG_ONU_CFG));
    return answered ? BSP_OK : result; // whatever the service's status word is
}

uint32_t bsp_pon_onu_get_portcfg_info(db_handle **db_out, uint32_t pon_port, uint32_t onu_id)
{
    return frame::get_stored_onu_view(pon_port, onu_id, BSP_CMD_VIEW_ONU_PORT_CONFIG, db_out);
}

uint32_t bsp_pononu_ctc_config_snmp_get(db_handle **, const bsp_onu_msg *record)
{
    db_handle *dropped; // callers use the status alone
    return frame::get_database(*record, frame::whole<bsp_onu_msg>, record->onu_cmd, frame::small_view, &dropped,
                               on(BSP_MSG_ONU_SNMP));
}

uint32_t bsp_pon_onu_get_vlan_mode_snmp(db_handle **db_out)
{
    return onu_view_of_all(BSP_CMD_VIEW_VLAN_MODE_SNMP, db_out);
}

uint32_t bsp_pon_onu_get_vlanlist_snmp(db_handle **db_out)
{
    return onu_view_of_all(BSP_CMD_VIEW_VLAN_LIST_SNMP, db_out);
}
