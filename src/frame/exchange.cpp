#include "frame/exchange.h"

#include "board/util.h"

namespace frame
{

void clear(void *record, uint32_t length)
{
    __builtin_memset(record, 0, length);
}

uint32_t failed(int32_t ipc_result, Way way)
{
    if (way.failure() != Failure::silent) userlog_err(way.function, way.line(), "ipc msg failed. rv=%d\n", ipc_result);
    return way.failure() == Failure::report ? BSP_ERR_IPC : static_cast<uint32_t>(ipc_result);
}

} // namespace frame
