// This file writes records of exchanges: those of a client, which BOARD_IPC_TRACE asks for, and those that a service
// answers. board/trace.h describes the format.
#pragma once

#include <atomic>
#include <span>

#include <sys/types.h>

#include "descriptor.h"
#include "transport.h"

namespace board
{

// A ClientThread says whose exchange it is.
struct ClientThread {
    pid_t process;
    pid_t thread; // 0: unknown
};

class TraceWriter
{
public:
    // Appends to the file `name`, which is made when it does not exist. With a null or empty name nothing is recorded.
    // The log says why a file cannot be used.
    explicit TraceWriter(const char *name);

    bool is_on() const { return on.load(std::memory_order_relaxed); }
    // Records an exchange, whose reply is empty unless `ipc_result` is 0. `result` has the bytes of the result in
    // shared memory, or none.
    void write(const ClientThread &client, const Call &call, int32_t ipc_result, const Reply &reply,
               std::span<const char> result);

private:
    Descriptor file;
    std::atomic<bool> on;
};

// Returns the writer for BOARD_IPC_TRACE.
TraceWriter &clients_trace();
void trace_exchange(const Call &call, int32_t ipc_result, const Reply &reply, Transport &transport);

} // namespace board
