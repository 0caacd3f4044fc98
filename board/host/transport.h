// This file says how the client half reaches a service. Each thread has a transport of its own.
#pragma once

#include <cstdint>
#include <memory>

#include "board/service.h"
#include "frame.h"

namespace board
{

struct Call {
    board_call call;
    uint32_t module;
    uint32_t msg_type;
    const void *request;
    uint32_t length;
    uint32_t allowed;
};

struct Reply {
    uint32_t status = 0;
    const void *data = nullptr; // valid until the next exchange
    uint32_t length = 0;
    Result result{};
};

class Transport
{
public:
    virtual ~Transport() = default;

    // Makes one exchange, which is bounded in time and delivered at most once. Returns IPC_OK and the reply, or another
    // IPC value and no reply. The request is at most IPC_MAX_LENGTH bytes long.
    virtual int32_t exchange(const Call &call, Reply &reply) = 0;

    // Copies the result in shared memory that came with the last exchange. Returns false when the service took it back.
    virtual bool copy_result(const Result &result, char *to) = 0;

    // Closes what is kept from call to call.
    virtual void drop() = 0;
};

// Makes the transports of all threads drop what they keep before their next exchange.
void renew_transports();

std::unique_ptr<Transport> make_unix_transport();

} // namespace board
