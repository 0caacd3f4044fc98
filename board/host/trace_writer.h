// This file writes records of exchanges: those of a client, which BOARD_IPC_TRACE asks for, and those that a service
// answers. board/trace.h describes the format.
#pragma once

#include <atomic>
#include <cstdint>
#include <span>

#include <sys/types.h>

#include "board/trace.h"
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
    // Appends to the file `name`, which is made when it does not exist, with times by this clock of board/trace.h. With
    // a null or empty name nothing is recorded. The log says why a file cannot be used.
    TraceWriter(const char *name, uint8_t clock);

    bool is_on() const { return on.load(std::memory_order_relaxed); }
    // Records an exchange, whose reply is empty unless `ipc_result` is 0. `result` has the bytes of the result in
    // shared memory, or none. The time is in nanoseconds.
    void write(uint64_t time, const ClientThread &client, const Call &call, int32_t ipc_result, const Reply &reply,
               std::span<const char> result);

    void note(uint64_t time, uint32_t module, uint32_t msg_type, std::span<const char> note);

private:
    void append(board_trace_record &record, const void *request, const void *response, const void *result);

    Descriptor file;
    std::atomic<bool> on;
};

// Returns the writer for BOARD_IPC_TRACE.
TraceWriter &clients_trace();
void trace_exchange(const Call &call, int32_t ipc_result, const Reply &reply, Transport &transport);

} // namespace board
