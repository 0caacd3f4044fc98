// This file has the settings and the blocks of the platform and debug channels.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace frame
{

// Most settings consist of a command, a port, a word for what the port alone does not say, and a block if there is one.
// A few settings have two more words.
FRAME_SHARED uint32_t set_platform_words(uint32_t port, uint32_t arg4, const void *data, Command command,
                                         uint32_t arg108, uint32_t arg112, Route route = on(BSP_MSG_PLAT))
{
    Request<bsp_plat_msg> request{command.code, port, arg4};
    request->plat_arg108 = arg108;
    request->plat_arg112 = arg112;
    if (command.size) __builtin_memcpy(request->plat_data, data, command.size);
    return set(*request, route);
}

FRAME_SHARED uint32_t set_platform(uint32_t port, uint32_t arg4, const void *data, Command command,
                                   Route route = on(BSP_MSG_PLAT))
{
    return set_platform_words(port, arg4, data, command, 0, 0, route);
}

// Copies the data of the answer to `out`.
FRAME_SHARED uint32_t get_platform(uint32_t port, uint32_t selector, void *out, Command command, Route route)
{
    Request<bsp_plat_msg> request{command.code, port, 0};
    request->plat_arg120 = selector;
    return get_block(*request, offsetof(bsp_plat_msg, plat_data), out, command.size, route);
}

} // namespace frame
