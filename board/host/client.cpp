// This file has the calls of board/ipc.h.
#include "client.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include <pthread.h>

#include "board/service.h"
#include "board/util.h"
#include "generated/record_length.h"
#include "not_cancelled.h"
#include "settings.h"
#include "trace_writer.h"
#include "transport.h"

namespace board
{
namespace
{

struct Client {
    std::unique_ptr<Transport> transport = make_unix_transport();
    Result result{};
};

thread_local Client *own_client = nullptr;
thread_local int32_t own_result = IPC_OK; // what the thread's last exchange returned, until it is taken

void end_client(void *client)
{
    own_client = nullptr;
    delete static_cast<Client *>(client);
}

pthread_key_t make_client_key()
{
    pthread_key_t key;
    if (pthread_key_create(&key, end_client)) throw std::bad_alloc();
    return key;
}

// A client lives as long as its thread. Other destructors of the thread may make calls when the client has been
// destroyed already: then there is a new one, which the system has destroyed afterwards. A thread_local object could
// not be made again. The client of the thread that ends the process is never destroyed, because handlers of exit() may
// make calls.
Client &this_threads_client()
{
    if (own_client) return *own_client;
    static const pthread_key_t key = make_client_key();
    auto client = std::make_unique<Client>();
    if (pthread_setspecific(key, client.get())) throw std::bad_alloc();
    own_client = client.release();
    return *own_client;
}

int32_t exchange(const Call &call, Reply &reply)
{
    Client &client = this_threads_client();
    client.result = Result{};
    const int32_t value = call.length > IPC_MAX_LENGTH ? IPC_ERR_TOO_LONG : client.transport->exchange(call, reply);
    client.result = reply.result;
    if (clients_trace().is_on()) trace_exchange(call, value, reply, *client.transport);
    return value;
}

int32_t set(board_call how, uint32_t module, uint32_t msg_type, const void *request, uint32_t length,
            uint32_t *status) noexcept
{
    const NotCancelled whole;
    try {
        Reply reply;
        const int32_t value = exchange({how, module, msg_type, request, length, 0}, reply);
        if (value == IPC_OK && status) *status = reply.status;
        return own_result = value;
    } catch (...) {
        return own_result = IPC_ERR_SYSTEM;
    }
}

int32_t get(board_call how, uint32_t module, uint32_t msg_type, const void *request, uint32_t length, void *response,
            uint32_t *response_length, uint32_t *status) noexcept
{
    const NotCancelled whole;
    try {
        const uint32_t allowed = response_length ? *response_length : 0;
        Reply reply;
        const int32_t value = exchange({how, module, msg_type, request, length, allowed}, reply);
        own_result = value;
        if (value) return value;
        // A caller that states no bound has room for the channel's record. The users of the channels agree on that, and
        // the service cannot know it. For an unknown channel nothing can be delivered safely.
        const uint32_t bound = allowed ? allowed : record_length(module, msg_type);
        const uint32_t delivered = response ? std::min(reply.length, bound) : 0;
        if (delivered) std::memcpy(response, reply.data, delivered);
        if (response_length) *response_length = delivered;
        if (status) *status = reply.status;
        return IPC_OK;
    } catch (...) {
        return own_result = IPC_ERR_SYSTEM;
    }
}

} // namespace

Result last_result()
{
    return this_threads_client().result;
}

bool copy_last_result(char *to, uint32_t length)
{
    Client &client = this_threads_client();
    if (length > client.result.length) return false;
    Result part = client.result;
    part.length = length;
    return client.transport->copy_result(part, to);
}

} // namespace board

int32_t ipc_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, uint32_t *status)
{
    return board::set(BOARD_CALL_SET, module, msg_type, request, request_length, status);
}

int32_t ipc_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, void *response,
                     uint32_t *response_length, uint32_t *status)
{
    return board::get(BOARD_CALL_GET, module, msg_type, request, request_length, response, response_length, status);
}

int32_t ipc_dgram_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           void *response, uint32_t *response_length, uint32_t *status)
{
    return board::get(BOARD_CALL_DGRAM_GET, module, msg_type, request, request_length, response, response_length,
                      status);
}

int32_t ipc_dgram_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           uint32_t *status)
{
    return board::set(BOARD_CALL_DGRAM_SET, module, msg_type, request, request_length, status);
}

void board_ipc_use_directory(const char *directory)
{
    try {
        board::choose_directory(directory);
        board::renew_transports();
        board::this_threads_client().transport->drop();
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "%s", error.what());
    }
}

const char *board_ipc_use_thread_directory(const char *directory)
{
    try {
        const char *const before = board::choose_thread_directory(directory);
        board::this_threads_client().transport->drop();
        return before;
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "%s", error.what());
        return nullptr;
    }
}

int32_t board_ipc_take_thread_result(void)
{
    return std::exchange(board::own_result, IPC_OK);
}

uint32_t board_ipc_use_thread_timeout(uint32_t milliseconds)
{
    return board::choose_thread_timeout(milliseconds);
}

const char *ipc_strerror(int32_t value)
{
    switch (value) {
    case IPC_OK:
        return "success";
    case IPC_ERR_NO_SERVICE:
        return "nobody serves the module";
    case IPC_ERR_ACCESS:
        return "no permission to connect to the service";
    case IPC_ERR_TIMEOUT:
        return "no answer within the time-out";
    case IPC_ERR_PEER_LOST:
        return "the service hung up before it answered";
    case IPC_ERR_REFUSED:
        return "the service's access rules refuse the request";
    case IPC_ERR_INCOMPATIBLE:
        return "the service speaks another frame version or byte order";
    case IPC_ERR_BROKEN_ANSWER:
        return "the service's answer is broken";
    case IPC_ERR_TOO_LONG:
        return "the request is too long";
    case IPC_ERR_SYSTEM:
        return "the operating system gave no socket or memory";
    case IPC_ERR_SERVICE:
        return "the service could not handle the request";
    default:
        return "an unknown IPC failure";
    }
}
