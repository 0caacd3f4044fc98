// What the requests to one remote ONU have in common.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace onu
{

using frame::Failure;
using frame::Query;
using frame::Way;

// Where an answer's data starts.
constexpr uint32_t data_offset = offsetof(bsp_onu_msg, onu_data);

FRAME_INLINE frame::Request<bsp_onu_msg> request_to(uint32_t command, uint32_t pon_port, uint32_t onu_id,
                                                    uint32_t uni_port = 0)
{
    frame::Request<bsp_onu_msg> request{command};
    request->onu_pon_port = pon_port;
    request->onu_onu_id = onu_id;
    request->onu_uni_port = static_cast<uint8_t>(uni_port);
    return request;
}

// The arguments that operations have in common come first, in their order: most pass them on where they stand.

// The answer's data.
FRAME_SHARED uint32_t ask_unchecked(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out, Query query,
                                    Way way, uint32_t preset = sizeof(bsp_onu_msg))
{
    auto request = request_to(query.command, pon_port, onu_id, uni_port);
    return frame::get_block(*request, preset, data_offset, out, query.size, way);
}

// The same where `out` is not null; else nothing of it. A failed exchange is not logged.
FRAME_SHARED uint32_t ask_if_wanted(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out, uint8_t channel,
                                    uint32_t command, uint32_t size)
{
    auto request = request_to(command, pon_port, onu_id, uni_port);
    frame::Response response;
    uint32_t result;
    if (response.receive(&*request, sizeof *request, sizeof *request, result,
                         frame::on(channel, Failure::silent, nullptr, 0)) &&
        out)
        response.copy(sizeof *request, data_offset, out, size);
    return result;
}

// The same, refused where `out` is null.
FRAME_SHARED uint32_t ask(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out, uint8_t channel,
                          Query query)
{
    if (!out) return BSP_ERR_PARAM;
    return ask_if_wanted(pon_port, onu_id, uni_port, out, channel, query.command, query.size);
}

// A view that its command code names.
FRAME_SHARED uint32_t view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out, Way way,
                           uint32_t uni_port = 0, uint32_t index = 0)
{
    auto request = request_to(command, pon_port, onu_id, uni_port);
    request->onu_arg24 = index;
    return frame::get_database(*request, sizeof *request, command, frame::small_view, db_out, way);
}

// A view that goes through the general query, as what that logs and returns shows.
FRAME_SHARED uint32_t stored_view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out)
{
    auto request = request_to(command, pon_port, onu_id);
    return bsp_pononu_ctc_config_by_db(db_out, &*request);
}

// Something for an ONU: a block, where there is one, and a word.
FRAME_SHARED uint32_t tell(uint32_t pon_port, uint32_t onu_id, uint32_t command, const void *data, uint32_t size,
                           uint32_t word, Way way)
{
    auto request = request_to(command, pon_port, onu_id);
    request->onu_arg24 = word;
    request.put(&bsp_onu_msg::onu_data, data, size);
    return frame::set(*request, way);
}

} // namespace onu
