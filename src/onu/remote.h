// What the requests to one remote ONU have in common.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace onu
{

using frame::Failure;
using frame::Site;

// Where an answer's data starts.
constexpr uint32_t data_offset = offsetof(bsp_onu_msg, onu_data);

// A command, and how many bytes of its answer's data are wanted.
struct Query {
    uint16_t command;
    uint16_t size;
};

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

// The answer's data; where `out` is null, none of it.
FRAME_SHARED uint32_t ask_if_wanted(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out, uint32_t channel,
                                    uint32_t command, uint32_t size)
{
    auto request = request_to(command, pon_port, onu_id, uni_port);
    frame::Response response;
    uint32_t result;
    if (response.receive(channel, &*request, sizeof *request, sizeof *request, result, Failure::silent, {}) && out)
        response.copy(sizeof *request, data_offset, out, size);
    return result;
}

// The answer's data, which must be wanted.
FRAME_SHARED uint32_t ask(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out, uint32_t channel,
                          Query query)
{
    if (!out) return BSP_ERR_PARAM;
    return ask_if_wanted(pon_port, onu_id, uni_port, out, channel, query.command, query.size);
}

// The answer's data, wanted or not.
FRAME_SHARED uint32_t ask_unchecked(uint32_t pon_port, uint32_t onu_id, uint32_t uni_port, void *out, uint32_t channel,
                                    uint32_t command, uint32_t size, Failure failure,
                                    uint32_t preset = sizeof(bsp_onu_msg), Site site = Site::here())
{
    auto request = request_to(command, pon_port, onu_id, uni_port);
    return frame::get_block(channel, &*request, sizeof *request, preset, data_offset, out, size, failure, site);
}

// A view that its command code names.
FRAME_SHARED uint32_t view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out,
                           Failure failure = Failure::report, uint32_t uni_port = 0, uint32_t index = 0,
                           uint32_t channel = BSP_MSG_ONU_CFG, Site site = Site::here())
{
    auto request = request_to(command, pon_port, onu_id, uni_port);
    request->onu_arg24 = index;
    return frame::get_database(channel, &*request, sizeof *request, sizeof *request, command, frame::small_view, db_out,
                               failure, site);
}

// A block for an ONU, which must be there.
FRAME_SHARED uint32_t tell(uint32_t pon_port, uint32_t onu_id, uint32_t command, const void *data, uint32_t size,
                           Site site = Site::here())
{
    if (!data) return BSP_ERR_PARAM;
    auto request = request_to(command, pon_port, onu_id);
    __builtin_memcpy(request->onu_data, data, size);
    return frame::set<Failure::pass>(BSP_MSG_ONU_CFG, *request, site);
}

} // namespace onu
