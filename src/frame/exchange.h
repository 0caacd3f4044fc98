// One synchronous exchange with the PON management service, and what becomes of its outcome.
#pragma once

#include <cstdint>

#include "board/datastore.h"
#include "board/ipc.h"
#include "bsp_pon.h"

// What operations share stands in each of them where speed counts, and once for all of them where size does. Left to
// itself the compiler does neither: it would inline what one file uses once, and call what another uses often.
#define FRAME_INLINE [[gnu::always_inline]] inline
#ifdef __OPTIMIZE_SIZE__
#define FRAME_SHARED [[gnu::noinline, gnu::noclone]] inline
#else
#define FRAME_SHARED FRAME_INLINE
#endif

namespace frame
{

// What an operation returns when the exchange itself fails.
enum class Failure : uint8_t {
    report, // log, BSP_ERR_IPC
    pass,   // log, the IPC value
    silent  // the IPC value
};

// A command, and how many bytes of its answer are wanted.
struct Query {
    uint16_t command;
    uint16_t size;
};

// By which channel an exchange goes, what becomes of its failure, and which operation and line a log line names: those
// of the place where on() stands, by default. All but the operation share a word, of which they leave the upper half
// free: one instruction sets it.
struct Way {
    const char *function;
    uint32_t details;

    static constexpr uint32_t first_channel = BSP_MSG_PON; // the lowest
    static constexpr uint32_t channels = 16, failures = 4, lines = 1024;
    static_assert(channels * failures * lines == 1u << 16);

    int line() const { return static_cast<int>(details / (failures * channels)); }
    uint32_t channel() const { return first_channel + details / failures % channels; }
    Failure failure() const { return static_cast<Failure>(details % failures); }
};

constexpr Way on(uint32_t channel, Failure failure = Failure::report, const char *function = __builtin_FUNCTION(),
                 uint32_t line = __builtin_LINE())
{
    return {function, (line % Way::lines * Way::channels + (channel - Way::first_channel)) * Way::failures +
                          static_cast<uint32_t>(failure)};
}

// Where a record of each kind carries its command code.
template <class Record>
constexpr uint32_t Record::*command_of = nullptr;
template <>
inline constexpr uint32_t bsp_pon_msg::*command_of<bsp_pon_msg> = &bsp_pon_msg::cmd;
template <>
inline constexpr uint32_t bsp_pon_msg_ext::*command_of<bsp_pon_msg_ext> = &bsp_pon_msg_ext::cmd;
template <>
inline constexpr uint32_t bsp_plat_msg::*command_of<bsp_plat_msg> = &bsp_plat_msg::plat_cmd;
template <>
inline constexpr uint32_t bsp_onu_msg::*command_of<bsp_onu_msg> = &bsp_onu_msg::onu_cmd;

// The size bounds of result databases in shared memory.
constexpr uint32_t small_view = 10240;
constexpr uint32_t large_view = 1048576;

// Response length words. The views' is that of a bsp_pon_msg_ext, whatever the request; no length offers no bytes, on
// purpose: the answer comes another way.
constexpr uint32_t view_length = sizeof(bsp_pon_msg_ext);
constexpr uint32_t no_length = 0;

// Zeroes `length` bytes. A call, because the compiler's own way to clear a record of known size is slower and larger.
void clear(void *record, uint32_t length);

// The result of an operation whose exchange failed with `ipc_result`, after the log line that its failure asks for.
[[gnu::cold]] uint32_t failed(int32_t ipc_result, Way way);

FRAME_SHARED uint32_t set(const void *record, uint32_t length, Way way)
{
    uint32_t status = BSP_OK;
    const int32_t ipc_result = ipc_set_exec(BSP_IPC_MODULE, way.channel(), record, length, &status);
    return ipc_result ? failed(ipc_result, way) : status;
}

// Sends a record and returns the service's status word.
template <class Record>
FRAME_SHARED uint32_t set(const Record &record, Way way)
{
    return set(&record, sizeof record, way);
}

FRAME_SHARED uint32_t get_into(const void *request, uint32_t request_length, void *response, uint32_t length, Way way)
{
    uint32_t status = BSP_OK;
    const int32_t ipc_result =
        ipc_get_exec(BSP_IPC_MODULE, way.channel(), request, request_length, response, &length, &status);
    return ipc_result ? failed(ipc_result, way) : status;
}

// Sends a record and receives the answer in `response`, at most `length` bytes of it. Returns the service's status
// word.
template <class Record>
FRAME_INLINE uint32_t get_into(const Record &request, void *response, uint32_t length, Way way)
{
    return get_into(&request, sizeof request, response, length, way);
}

// Sends a record and receives the answer in its place. Returns the service's status word.
template <class Record>
FRAME_INLINE uint32_t get_in_place(Record &record, Way way)
{
    return get_into(record, &record, sizeof record, way);
}

// Copies `count` bytes of what a response holds, zeros behind its end.
FRAME_SHARED void deliver(const void *held, uint32_t size, void *out, uint32_t count)
{
    const uint32_t copied = count < size ? count : size;
    __builtin_memcpy(out, held, copied);
    if (copied < count) clear(static_cast<char *>(out) + copied, count - copied);
}

// A response buffer for a get call.
class Response
{
public:
    // The response's length: what the call presets and, where that states no bound, a record of the request's length.
    // It is not kept in here, where for all the compiler knows the exchange could change it.
    static constexpr uint32_t size_for(uint32_t preset, uint32_t request_length)
    {
        return preset ? preset : request_length;
    }

    using Call = decltype(ipc_get_exec);

    // Sends a record and receives the answer here. True: `result` is the service's status word. False: the exchange
    // failed, and `result` is the operation's.
    FRAME_SHARED bool receive(const void *request, uint32_t request_length, uint32_t preset, uint32_t &result, Way way,
                              Call *exec = ipc_get_exec)
    {
        clear(bytes, size_for(preset, request_length));
        uint32_t status = BSP_OK;
        const int32_t ipc_result =
            exec(BSP_IPC_MODULE, way.channel(), request, request_length, bytes, &preset, &status);
        result = ipc_result ? failed(ipc_result, way) : status;
        return ipc_result == IPC_OK;
    }

    // The text at `offset`, which ends with the response's `size` bytes at the latest.
    const char *text(uint32_t size, uint32_t offset)
    {
        bytes[size - 1] = '\0';
        return bytes + offset;
    }

    // What the response's `size` bytes hold from `offset` on, `count` bytes of it; zeros behind their end.
    void copy(uint32_t size, uint32_t offset, void *out, uint32_t count) const
    {
        deliver(bytes + offset, size - offset, out, count);
    }

    uint8_t byte(uint32_t offset) const { return static_cast<uint8_t>(bytes[offset]); }

    uint32_t word(uint32_t offset) const
    {
        uint32_t value;
        __builtin_memcpy(&value, bytes + offset, sizeof value);
        return value;
    }

private:
    alignas(uint32_t) char bytes[sizeof(bsp_onu_msg)]; // the longest
};

FRAME_SHARED uint32_t get_database(const void *request, uint32_t request_length, uint32_t preset, const uint32_t &key,
                                   uint32_t bound, db_handle **out, Way way)
{
    Response response;
    uint32_t result;
    if (response.receive(request, request_length, preset, result, way)) *out = db_from_shmem(key, bound);
    return result;
}

// Sends a record; then stores the handle of the database of at most `bound` bytes that the service left in shared
// memory under `key`, which is read only after the exchange. Returns the service's status word.
template <class Record>
FRAME_INLINE uint32_t get_database(const Record &request, uint32_t preset, const uint32_t &key, uint32_t bound,
                                   db_handle **out, Way way)
{
    return get_database(&request, sizeof request, preset, key, bound, out, way);
}

FRAME_SHARED uint32_t get_block(const void *request, uint32_t request_length, uint32_t preset, uint32_t offset,
                                void *out, uint32_t count, Way way)
{
    Response response;
    uint32_t result;
    if (response.receive(request, request_length, preset, result, way))
        response.copy(Response::size_for(preset, request_length), offset, out, count);
    return result;
}

// Sends a record; then copies `count` bytes that start at `offset` of the response, zeros for what it does not hold.
// Returns the service's status word.
template <class Record>
FRAME_INLINE uint32_t get_block(const Record &request, uint32_t preset, uint32_t offset, void *out, uint32_t count,
                                Way way)
{
    return get_block(&request, sizeof request, preset, offset, out, count, way);
}

FRAME_SHARED bool get_text_database(const void *request, uint32_t request_length, uint32_t preset, uint32_t offset,
                                    db_handle **out, uint32_t &result, Way way)
{
    Response response;
    if (!response.receive(request, request_length, preset, result, way)) return false;
    *out = db_from_string(response.text(Response::size_for(preset, request_length), offset));
    return true;
}

// Sends a record; then makes a database of the text that starts at `offset` of the response. True: `result` is the
// service's status word. False: the exchange failed, and `result` is the operation's.
template <class Record>
FRAME_INLINE bool get_text_database(const Record &request, uint32_t preset, uint32_t offset, db_handle **out,
                                    uint32_t &result, Way way)
{
    return get_text_database(&request, sizeof request, preset, offset, out, result, way);
}

// Sends a record; then copies the text that starts at `offset` of the response, unless `out` is null. Returns the
// service's status word.
template <class Record>
FRAME_SHARED uint32_t get_text(const Record &request, uint32_t preset, uint32_t offset, char *out, Way way)
{
    Response response;
    uint32_t result;
    if (response.receive(&request, sizeof request, preset, result, way) && out)
        __builtin_strcpy(out, response.text(Response::size_for(preset, sizeof request), offset));
    return result;
}

} // namespace frame
