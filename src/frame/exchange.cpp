#include "frame/exchange.h"

#include "board/util.h"

namespace frame
{

void clear(void *record, uint32_t length)
{
    __builtin_memset(record, 0, length);
}

uint32_t failed(int32_t ipc_result, Route route)
{
    if (route.policy() != ErrorPolicy::silent)
        userlog_err(route.function, route.line(), "ipc msg failed. rv=%d\n", ipc_result);
    return route.policy() == ErrorPolicy::report ? BSP_ERR_IPC : static_cast<uint32_t>(ipc_result);
}

} // namespace frame
