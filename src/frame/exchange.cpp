#include "frame/exchange.h"

#include "board/util.h"
#include "frame/request.h"

namespace frame
{
namespace
{

// A response buffer with room for the longest record, of which as much is cleared and used as the exchange needs:
// the length that the library presets and, where that states no bound, the channel's record.
class Response
{
public:
    // True: answered, and `result` is the status word. False: failed, and `result` is the operation's.
    bool receive(const Sent &sent, Site site, uint32_t &result)
    {
        const uint32_t used = sent.preset > sent.length ? sent.preset : sent.length;
        clear(bytes, used);
        last = bytes + used - 1;
        uint32_t length = sent.preset;
        uint32_t status = BSP_OK;
        const int32_t ipc_result =
            ipc_get_exec(BSP_IPC_MODULE, sent.channel, sent.record, sent.length, bytes, &length, &status);
        result = ipc_result ? failed(ipc_result, sent.failure, site) : status;
        return ipc_result == IPC_OK;
    }

    // The text at `offset`, which ends with the record at the latest.
    const char *text(uint32_t offset)
    {
        *last = '\0';
        return bytes + offset;
    }

private:
    alignas(uint32_t) char bytes[sizeof(bsp_onu_msg)];
    char *last;
};

} // namespace

uint32_t failed(int32_t ipc_result, Failure failure, Site site)
{
    if (failure != Failure::silent) userlog_err(site.function, site.line, "ipc msg failed. rv=%d\n", ipc_result);
    return failure == Failure::report ? BSP_ERR_IPC : static_cast<uint32_t>(ipc_result);
}

uint32_t get_database(const Sent &sent, const uint32_t &key, uint32_t bound, db_handle **out, Site site)
{
    Response response;
    uint32_t result;
    if (response.receive(sent, site, result)) *out = db_from_shmem(key, bound);
    return result;
}

uint32_t get_text(const Sent &sent, uint32_t offset, char *out, Site site)
{
    Response response;
    uint32_t result;
    if (response.receive(sent, site, result) && out) __builtin_strcpy(out, response.text(offset));
    return result;
}

} // namespace frame
