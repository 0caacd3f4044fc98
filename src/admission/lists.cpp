// These operations edit and read the whitelist and the blacklist.
#include "frame/send.h"
#include "frame/view.h"

using frame::on;
using frame::Request;
using frame::Route;
using frame::send;
using frame::set;

namespace
{

// The answers about the whitelist are shorter than a record.
constexpr uint32_t lookup_length = 776;

// Receives the answer in `resp`. When `resp` is null, the answer is dropped. A null `mac` names no ONU by its MAC
// address.
FRAME_SHARED uint32_t look_up(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac, void *resp,
                              Route route = on(BSP_MSG_PON))
{
    Request<bsp_pon_msg> request{BSP_CMD_WHITELIST_GET, pon_port, onu_id};
    if (mac) request.put_mac(mac);
    uint32_t dropped[lookup_length / sizeof(uint32_t)];
    if (!resp) {
        frame::clear(dropped, sizeof dropped);
        resp = dropped;
    }
    return frame::get_into(*request, resp, lookup_length, route);
}

FRAME_SHARED uint32_t ids_in_use(uint32_t pon_port, uint32_t command, void *resp, Route route = on(BSP_MSG_PON))
{
    if (!resp) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{command, pon_port, 0};
    return frame::get_into(*request, resp, sizeof *request, route);
}

} // namespace

uint32_t bsp_pon_blacklist_add_onu_auto_id(uint32_t pon_port, const uint8_t *mac, const char *text)
{
    if (!mac) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{BSP_CMD_BLACKLIST_ADD_AUTO, pon_port, 0};
    request.put_mac(mac);
    request.put(&bsp_pon_msg::data429, text);
    return set(*request, on(BSP_MSG_PON));
}

uint32_t bsp_pon_reject_onu_to_blacklist(uint32_t pon_port, uint32_t onu_id)
{
    return send(pon_port, onu_id, BSP_CMD_BLACKLIST_REJECT, nullptr, on(BSP_MSG_PON));
}

uint32_t bsp_pon_reject_onu_to_blacklist_batch(const bsp_pon_msg *record)
{
    if (!record) return BSP_ERR_PARAM;
    return frame::send_copy(record, BSP_CMD_BLACKLIST_REJECT_BATCH, on(BSP_MSG_PON));
}

uint32_t bsp_pon_no_bind_blacklist_onu_by_mac(uint32_t pon_port, const uint8_t *mac)
{
    if (!mac) return BSP_ERR_PARAM;
    return send(pon_port, 0, BSP_CMD_BLACKLIST_REMOVE, mac, on(BSP_MSG_PON));
}

uint32_t bsp_pon_no_bind_blacklist_batch(bsp_pon_msg *record)
{
    return frame::send_stamped(record, BSP_CMD_BLACKLIST_REMOVE_BATCH, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_w_onu_spec_id(uint32_t pon_port, uint32_t onu_id, void *resp)
{
    return look_up(pon_port, onu_id, nullptr, resp);
}

uint32_t bsp_pon_get_w_onu_by_mac(uint32_t pon_port, const uint8_t *mac, void *resp)
{
    if (!mac) return BSP_ERR_PARAM;
    return look_up(pon_port, 0, mac, resp);
}

uint32_t bsp_pon_get_w_onu_id_resouce(uint32_t pon_port, void *resp)
{
    return ids_in_use(pon_port, BSP_CMD_WHITELIST_IDS, resp);
}

uint32_t bsp_pon_get_b_onu_id_resouce(uint32_t pon_port, void *resp)
{
    return ids_in_use(pon_port, BSP_CMD_BLACKLIST_IDS, resp);
}

uint32_t bsp_pon_get_onu_blacklist(bsp_pon_msg *record, db_handle **db_out)
{
    record->cmd = BSP_CMD_BLACKLIST_GET;
    return frame::get_database(*record, frame::view_room, record->cmd, frame::large_view, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_b_onu_spec_id(const bsp_pon_msg *record, db_handle **db_out)
{
    Request<bsp_pon_msg> request{BSP_CMD_BLACKLIST_GET, record->pon_port, record->onu_id};
    return frame::get_database(*request, frame::view_room, request->cmd, frame::large_view, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_b_onu_by_mac(uint32_t pon_port, const uint8_t *mac, db_handle **db_out)
{
    if (!mac) return BSP_ERR_PARAM;
    Request<bsp_pon_msg> request{BSP_CMD_BLACKLIST_GET, pon_port, 0};
    request.put_mac(mac);
    constexpr frame::Room room =
        frame::room_of(sizeof(bsp_pon_msg_ext), lookup_length); // fewer bytes than similar operations offer
    return frame::get_database(*request, room, request->cmd, frame::large_view, db_out, on(BSP_MSG_PON));
}

uint32_t bsp_pon_get_onu_blacklist_snmp(db_handle **db_out)
{
    return frame::get_stored_view(BSP_CMD_VIEW_BLACKLIST_SNMP, db_out);
}

uint32_t bsp_pon_get_onu_blacklist_web(db_handle **db_out, bsp_pon_msg *record)
{
    return frame::get_stored_view(BSP_CMD_VIEW_BLACKLIST_WEB, db_out, record);
}
