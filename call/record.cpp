#include "call/record.h"

#include "board/ipc.h"

namespace call
{

bool has_answer(catalogue::Call call)
{
    return call == catalogue::Call::get || call == catalogue::Call::dgram_get;
}

Exchange exchange_record(const Sender &sender, Permission &permission, const Destination &destination,
                         catalogue::Call call, const Bytes &request, uint32_t preset, size_t room)
{
    const Watch watch(sender, permission);
    const auto length = static_cast<uint32_t>(request.size());
    uint32_t status = 0;
    if (has_answer(call)) {
        const auto get = call == catalogue::Call::get ? ipc_get_exec : ipc_dgram_get_exec;
        Bytes response(room);
        get(destination.module, destination.channel, request.data(), length, response.data(), &preset, &status);
    } else {
        const auto set = call == catalogue::Call::set ? ipc_set_exec : ipc_dgram_set_exec;
        set(destination.module, destination.channel, request.data(), length, &status);
    }
    return watch.exchange();
}

} // namespace call
