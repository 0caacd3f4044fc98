// This file has what the requests to one remote ONU have in common.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace frame
{

// The data of an answer starts at this offset.
constexpr uint32_t onu_data_offset = offsetof(bsp_onu_msg, onu_data);

FRAME_SHARED Request<bsp_onu_msg> request_to_onu(uint32_t command, uint32_t pon_port, uint32_t onu_id,
                                                 uint32_t uni_port = 0)
{
    Request<bsp_onu_msg> request{command, pon_port, onu_id};
    request->onu_uni_port = static_cast<uint8_t>(uni_port);
    return request;
}

// The arguments that operations have in common come first and in the operations' order, so that most operations pass
// them on without moving them.

// Copies the data of the answer to `out`, which is not checked for null.
FRAME_SHARED uint32_t ask_onu_unchecked(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out,
                                        Command command, Route route, Room room = whole<bsp_onu_msg>)
{
    auto request = request_to_onu(command.code, pon_port, onu_id, uni_port);
    return get_block(*request, onu_data_offset, out, command.size, route, room);
}

// Copies the data of the answer to `out`, unless that is null. A failed exchange is not logged.
FRAME_SHARED uint32_t ask_onu_if_wanted(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out,
                                        uint32_t channel, uint32_t command, uint32_t size)
{
    auto request = request_to_onu(command, pon_port, onu_id, uni_port);
    Response response;
    uint32_t result;
    if (response.receive(&*request, sizeof *request, whole<bsp_onu_msg>, result, silently_on(channel)) && out)
        response.copy(sizeof *request, onu_data_offset, out, size);
    return result;
}

// Copies the data of an answer about the ONU itself to `out`, unless that is null. A failed exchange is not logged.
FRAME_SHARED uint32_t ask_about_onu(uint32_t pon_port, uint32_t onu_id, void *out, Command command)
{
    return ask_onu_if_wanted(pon_port, onu_id, 0, out, BSP_MSG_ONU_INFO, command.code, command.size);
}

// Copies the data of an answer about the ONU's configuration to `out`. A null `out` is refused. A failed exchange is
// not logged.
FRAME_SHARED uint32_t ask_onu_config(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out, Command command)
{
    if (!out) return BSP_ERR_PARAM;
    return ask_onu_if_wanted(pon_port, onu_id, uni_port, out, BSP_MSG_ONU_CFG, command.code, command.size);
}

// As above, for data that belongs to no UNI port.
FRAME_SHARED uint32_t ask_onu_config(uint32_t pon_port, uint32_t onu_id, void *out, Command command)
{
    return ask_onu_config(pon_port, onu_id, 0, out, command);
}

// Asks for the view that the command code names, of one UNI port or of what an index selects.
FRAME_SHARED uint32_t get_part_of_onu_view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out,
                                           Route route, uint32_t uni_port, uint32_t index)
{
    auto request = request_to_onu(command, pon_port, onu_id, uni_port);
    request->onu_arg24 = index;
    return get_database(*request, whole<bsp_onu_msg>, command, small_view, db_out, route);
}

FRAME_SHARED uint32_t get_onu_view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out,
                                   Route route)
{
    return get_part_of_onu_view(pon_port, onu_id, command, db_out, route, 0, 0);
}

// Asks for a view through the general query. The general query decides what is logged and returned.
FRAME_SHARED uint32_t get_stored_onu_view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out)
{
    auto request = request_to_onu(command, pon_port, onu_id);
    return bsp_pononu_ctc_config_by_db(db_out, &*request);
}

// Sends a setting to an ONU: a word, and a block if there is one.
FRAME_SHARED uint32_t set_onu(uint32_t pon_port, uint32_t onu_id, uint32_t command, const void *data, uint32_t size,
                              uint32_t word, Route route)
{
    auto request = request_to_onu(command, pon_port, onu_id);
    request->onu_arg24 = word;
    request.put(&bsp_onu_msg::onu_data, data, size);
    return set(*request, route);
}

} // namespace frame
