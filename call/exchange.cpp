#include "call/exchange.h"

#include <algorithm>
#include <exception>
#include <utility>

#include <dlfcn.h>

#include "board/ipc.h"
#include "call/codec/decode.h"
#include "call/record_call.h"

namespace call
{
namespace
{

using catalogue::Class;
using catalogue::Command;

struct Watched {
    const Sender *sender = nullptr; // null: no Watch lives on this thread
    Permission *permission = nullptr;
    std::exception_ptr refusal;
};
thread_local Watched watched;
thread_local Exchange last;

void note_answer(const uint32_t *status)
{
    last.status = *status;
}

RecordCall carried_call(uint32_t preset)
{
    const catalogue::Record *record = watched.sender->record;
    return {last.channel, last.call, record ? record : last.channel->record, last.request, preset};
}

int32_t carry(Carrier &carrier, uint32_t preset, RecordOutcome &outcome)
{
    forget_carried();
    if (!last.channel) return IPC_ERR_SYSTEM;
    outcome = carrier.carry(carried_call(preset));
    return outcome.ipc_result;
}

// These make the exchange by a carrier. The last arguments are those of the IPC library's functions.
int32_t carry_to(Carrier &carrier, uint32_t *status)
{
    RecordOutcome outcome;
    const int32_t result = carry(carrier, 0, outcome);
    if (result == IPC_OK) *status = outcome.status;
    return result;
}

int32_t carry_to(Carrier &carrier, void *response, uint32_t *length, uint32_t *status)
{
    RecordOutcome outcome;
    const int32_t result = carry(carrier, *length, outcome);
    if (result != IPC_OK) return result;
    // A length of 0 states no bound, but that of the channel's record.
    const size_t room = *length ? *length : last.channel->record->size;
    *length = static_cast<uint32_t>(std::min(room, outcome.response.size()));
    std::copy_n(outcome.response.begin(), *length, static_cast<uint8_t *>(response));
    *status = outcome.status;
    keep_carried(std::move(outcome));
    return IPC_OK;
}

void note_answer(const void *response, const uint32_t *length, const uint32_t *status)
{
    const auto *bytes = static_cast<const uint8_t *>(response);
    last.response.assign(bytes, bytes + *length);
    note_answer(status);
}

Class impact_of(const Sender &sender, const Command *command)
{
    if (sender.operation && sender.operation->command) return sender.operation->impact;
    return worst_impact(command, last.call);
}

// Asks whether the request that was noted may be sent. The exceptions of the permission end here, because they must not
// pass through the library.
Verdict decide(const Sender &sender)
{
    try {
        const Command *command = sender.operation ? sender.operation->command : nullptr;
        const bool is_known = sender.record && last.channel;
        if (!command && is_known) command = command_of(*sender.record, {last.channel, last.call}, last.request);
        return watched.permission->decide({sender.doing, impact_of(sender, command), sender.operation, command, last});
    } catch (...) {
        watched.refusal = std::current_exception();
        return Verdict::keep_back;
    }
}

// Notes a call. If the call is permitted, passes it on to the IPC library's function of the same name. The last
// argument is the address of the status word.
template <catalogue::Call call, class Function, class... Rest>
int32_t pass_on(const char *name, uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                Rest... rest)
{
    if (!watched.sender) return IPC_ERR_SYSTEM;
    watched.refusal = nullptr; // of an exchange before this one
    const auto *bytes = static_cast<const uint8_t *>(request);
    last = {.made = true,
            .record = watched.sender->record,
            .channel = catalogue::find_channel(msg_type),
            .call = call,
            .request = {bytes, bytes + request_length},
            .response = {}};
    const Verdict verdict = decide(*watched.sender);
    if (watched.refusal) return IPC_ERR_SYSTEM;
    if (verdict == Verdict::keep_back) {
        last.kept_back = true;
        return IPC_OK;
    }
    if (Carrier *const carrier = carrier_of_thread()) {
        try {
            last.result = carry_to(*carrier, rest...);
        } catch (...) {
            watched.refusal = std::current_exception();
            last.result = IPC_ERR_SYSTEM;
        }
    } else {
        static const auto function = reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
        last.result = function ? function(module, msg_type, request, request_length, rest...) : IPC_ERR_SYSTEM;
    }
    const int32_t result = last.result;
    if (result == IPC_OK) note_answer(rest...);
    return result;
}

} // namespace

Class worst_impact(const Command *command, catalogue::Call call)
{
    if (!command)
        return call == catalogue::Call::set || call == catalogue::Call::dgram_set ? Class::service_affecting
                                                                                  : Class::read;
    Class worst = Class::read;
    for (const Command &other : catalogue::commands())
        if (other.channel == command->channel && other.code == command->code && other.call.value_or(call) == call)
            worst = std::max(worst, other.impact);
    return worst;
}

Watch::Watch(const Sender &sender, Permission &permission)
{
    watched = {&sender, &permission, nullptr};
    last = {};
}

Watch::~Watch()
{
    watched = {};
}

const Exchange &Watch::exchange() const
{
    if (watched.refusal) std::rethrow_exception(watched.refusal);
    return last;
}

const Exchange &last_exchange()
{
    return last;
}

} // namespace call

using call::pass_on;

extern "C" {

int32_t ipc_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, uint32_t *status)
{
    return pass_on<catalogue::Call::set, decltype(ipc_set_exec)>("ipc_set_exec", module, msg_type, request,
                                                                 request_length, status);
}

int32_t ipc_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, void *response,
                     uint32_t *response_length, uint32_t *status)
{
    return pass_on<catalogue::Call::get, decltype(ipc_get_exec)>("ipc_get_exec", module, msg_type, request,
                                                                 request_length, response, response_length, status);
}

int32_t ipc_dgram_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           void *response, uint32_t *response_length, uint32_t *status)
{
    return pass_on<catalogue::Call::dgram_get, decltype(ipc_dgram_get_exec)>(
        "ipc_dgram_get_exec", module, msg_type, request, request_length, response, response_length, status);
}

int32_t ipc_dgram_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           uint32_t *status)
{
    return pass_on<catalogue::Call::dgram_set, decltype(ipc_dgram_set_exec)>("ipc_dgram_set_exec", module, msg_type,
                                                                             request, request_length, status);
}
}
