#include "exchange.h"

#include <exception>
#include <utility>

#include <dlfcn.h>

#include "board/ipc.h"
#include "mode.h"

namespace ponctl
{
namespace
{

const Sender *watched = nullptr; // null: nobody watches
Exchange last;
std::vector<Exchange> kept;
std::exception_ptr refusal;

void note_answer(const uint32_t *status)
{
    last.status = *status;
}

void note_answer(const void *response, const uint32_t *length, const uint32_t *status)
{
    const auto *bytes = static_cast<const uint8_t *>(response);
    if (watched) last.response.assign(bytes, bytes + *length);
    note_answer(status);
}

// Whether the request that was noted may be sent. The library, through which the call came, takes no exception.
bool may_be_sent()
{
    try {
        ask_before(*watched, last);
        return true;
    } catch (...) {
        refusal = std::current_exception();
        return false;
    }
}

// Notes a call and passes it on to the IPC library's function of the same name. The last of the arguments is where the
// status word goes.
template <class Function, class... Rest>
int32_t pass_on(const char *name, catalogue::Call call, uint32_t module, uint32_t msg_type, const void *request,
                uint32_t request_length, Rest... rest)
{
    if (watched) {
        const auto *bytes = static_cast<const uint8_t *>(request);
        last = {
            true, IPC_OK, 0, watched->record, catalogue::find_channel(msg_type), call, {bytes, bytes + request_length},
            {}};
    }
    if (mode().dry_run) {
        kept.push_back(last);
        return IPC_OK;
    }
    if (watched && !may_be_sent()) return IPC_ERR_SYSTEM;
    const auto function = reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
    const int32_t result = function ? function(module, msg_type, request, request_length, rest...) : IPC_ERR_SYSTEM;
    last.result = result;
    if (result == IPC_OK) note_answer(rest...);
    return result;
}

} // namespace

Watch::Watch(const Sender &sender)
{
    watched = &sender;
    last = {};
    refusal = nullptr;
}

Watch::~Watch()
{
    watched = nullptr;
}

const Exchange &Watch::exchange() const
{
    if (refusal) std::rethrow_exception(refusal);
    return last;
}

const Exchange &last_exchange()
{
    return last;
}

std::vector<Exchange> take_kept_requests()
{
    return std::exchange(kept, {});
}

} // namespace ponctl

using ponctl::pass_on;

extern "C" {

int32_t ipc_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, uint32_t *status)
{
    return pass_on<decltype(ipc_set_exec)>("ipc_set_exec", catalogue::Call::set, module, msg_type, request,
                                           request_length, status);
}

int32_t ipc_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, void *response,
                     uint32_t *response_length, uint32_t *status)
{
    return pass_on<decltype(ipc_get_exec)>("ipc_get_exec", catalogue::Call::get, module, msg_type, request,
                                           request_length, response, response_length, status);
}

int32_t ipc_dgram_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           void *response, uint32_t *response_length, uint32_t *status)
{
    return pass_on<decltype(ipc_dgram_get_exec)>("ipc_dgram_get_exec", catalogue::Call::dgram_get, module, msg_type,
                                                 request, request_length, response, response_length, status);
}

int32_t ipc_dgram_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           uint32_t *status)
{
    return pass_on<decltype(ipc_dgram_set_exec)>("ipc_dgram_set_exec", catalogue::Call::dgram_set, module, msg_type,
                                                 request, request_length, status);
}
}
