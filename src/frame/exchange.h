// One synchronous exchange with the PON management service, and what becomes of its outcome.
#pragma once

#include <cstdint>

#include "board/datastore.h"
#include "board/ipc.h"
#include "bsp_pon.h"

namespace frame
{

// What an operation returns when the exchange itself fails.
enum class Failure : uint8_t {
    report, // log, BSP_ERR_IPC
    pass,   // log, the IPC value
    silent  // the IPC value
};

// The operation that a log line names, and its line: the place of the call, by default.
struct Site {
    const char *function;
    int line;

    static constexpr Site here(const char *function = __builtin_FUNCTION(), int line = __builtin_LINE())
    {
        return {function, line};
    }
};

// The size bounds of result databases in shared memory.
constexpr uint32_t small_view = 10240;
constexpr uint32_t large_view = 1048576;

// A response length word that offers no bytes, on purpose: the answer comes another way.
constexpr uint32_t no_length = 0;

// The result of an operation whose exchange failed with `ipc_result`, after the log line that its style asks for.
[[gnu::cold]] uint32_t failed(int32_t ipc_result, Failure failure, Site site);

// Sends a record and returns the service's status word.
template <Failure failure = Failure::report, class Record>
inline uint32_t set(uint32_t channel, const Record &record, Site site = Site::here())
{
    uint32_t status = BSP_OK;
    const int32_t ipc_result = ipc_set_exec(BSP_IPC_MODULE, channel, &record, sizeof record, &status);
    return ipc_result ? failed(ipc_result, failure, site) : status;
}

// Sends a record and receives the answer in its place. Returns the service's status word.
template <Failure failure = Failure::report, class Record>
inline uint32_t get_in_place(uint32_t channel, Record &record, Site site = Site::here())
{
    uint32_t status = BSP_OK;
    uint32_t length = sizeof record;
    const int32_t ipc_result = ipc_get_exec(BSP_IPC_MODULE, channel, &record, sizeof record, &record, &length, &status);
    return ipc_result ? failed(ipc_result, failure, site) : status;
}

// A record to send, as the functions that need its response for a moment only take it.
struct Sent {
    uint32_t channel;
    const void *record;
    uint32_t length;
    uint32_t preset; // of the response length word
    Failure failure;
};

// Sends a record; then fetches the database that the service left in shared memory under `key`, which is read only
// after the exchange, and stores its handle. Returns the service's status word.
uint32_t get_database(const Sent &sent, const uint32_t &key, uint32_t bound, db_handle **out, Site site = Site::here());

// Sends a record; then copies the text that starts at `offset` of the response, unless `out` is null. Returns the
// service's status word.
uint32_t get_text(const Sent &sent, uint32_t offset, char *out, Site site = Site::here());

} // namespace frame
