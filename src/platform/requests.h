// Settings and blocks of the platform and debug channels.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace platform
{

// What settings say, beside their command; nothing else of the record is used by more than one.
FRAME_SHARED uint32_t send(uint32_t port, uint32_t arg4, uint32_t command, const void *data, uint32_t size,
                           uint32_t arg108 = 0, uint32_t arg112 = 0, frame::Way way = frame::on(BSP_MSG_PLAT))
{
    frame::Request<bsp_plat_msg> request{command};
    request->plat_port = port;
    request->plat_arg4 = arg4;
    request->plat_arg108 = arg108;
    request->plat_arg112 = arg112;
    if (size) __builtin_memcpy(request->plat_data, data, size);
    return frame::set(*request, way);
}

// The answer's data.
FRAME_SHARED uint32_t read(uint32_t port, uint32_t arg4, uint32_t arg120, void *out, frame::Query query, frame::Way way,
                           uint32_t preset = sizeof(bsp_plat_msg))
{
    frame::Request<bsp_plat_msg> request{query.command};
    request->plat_port = port;
    request->plat_arg4 = arg4;
    request->plat_arg120 = arg120;
    return frame::get_block(*request, preset, offsetof(bsp_plat_msg, plat_data), out, query.size, way);
}

} // namespace platform
