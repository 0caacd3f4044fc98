// BOARD_IPC_TRACE: the client half's record of its exchanges. The format is in board/trace.h.
#pragma once

#include "transport.h"

namespace board
{

bool trace_is_on();
void trace_exchange(const Call &call, int32_t ipc_result, const Reply &reply, Transport &transport);

} // namespace board
