#include "exchange.h"

#include <dlfcn.h>

#include "board/ipc.h"

namespace ponctl
{
namespace
{

bool watching = false;
bool sending = true;
Exchange last;

void note_answer(const uint32_t *status)
{
    last.status = *status;
}

void note_answer(const void *response, const uint32_t *length, const uint32_t *status)
{
    const auto *bytes = static_cast<const uint8_t *>(response);
    if (watching) last.response.assign(bytes, bytes + *length);
    note_answer(status);
}

// Notes a call and passes it on to the IPC library's function of the same name. The last of the arguments is where the
// status word goes.
template <class Function, class... Rest>
int32_t pass_on(const char *name, catalogue::Call call, uint32_t module, uint32_t msg_type, const void *request,
                uint32_t request_length, Rest... rest)
{
    if (watching) {
        const auto *bytes = static_cast<const uint8_t *>(request);
        last = {true, IPC_OK, 0, catalogue::find_channel(msg_type), call, {bytes, bytes + request_length}, {}};
        if (!sending) return IPC_OK;
    }
    const auto function = reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
    const int32_t result = function ? function(module, msg_type, request, request_length, rest...) : IPC_ERR_SYSTEM;
    last.result = result;
    if (result == IPC_OK) note_answer(rest...);
    return result;
}

} // namespace

Watch::Watch(bool sent)
{
    watching = true;
    sending = sent;
    last = {};
}

Watch::~Watch()
{
    watching = false;
}

const Exchange &Watch::exchange() const
{
    return last;
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
