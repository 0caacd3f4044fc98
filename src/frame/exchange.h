// This file has one synchronous exchange with the PON management service, and turns its outcome into the result of an
// operation.
#pragma once

#include <cstdint>

#include "board/datastore.h"
#include "board/ipc.h"
#include "bsp_pon.h"

// The code that operations share is inlined into each of them where speed counts, and exists only once where size
// counts. The compiler alone does neither: it would inline what one file uses once, and call what another file uses
// often.
#define FRAME_INLINE [[gnu::always_inline]] inline
#ifdef __OPTIMIZE_SIZE__
#define FRAME_SHARED [[gnu::noinline, gnu::noclone]] inline
#else
#define FRAME_SHARED FRAME_INLINE
#endif

namespace frame
{

// An ErrorPolicy says what an operation does when the exchange itself fails.
enum class ErrorPolicy : uint8_t {
    report, // it logs the failure and returns BSP_ERR_IPC
    pass,   // it logs the failure and returns the IPC value
    silent  // it returns the IPC value
};

// A Command is a command code with the number of bytes that its request carries or that are wanted of its answer.
struct Command {
    uint16_t code;
    uint16_t size;
};

// A Route says by which channel and call an exchange goes, what is done when it fails, and which operation and line a
// log line names. By default these are the operation and line where on() stands. All but the operation share one word
// and leave its upper half free, so that one instruction sets it.
struct Route {
    const char *function;
    uint32_t details;

    static constexpr uint32_t first_channel = BSP_MSG_PON; // the lowest channel
    static constexpr uint32_t channels = 16, policies = 4, calls = 2, lines = 512;
    static_assert(channels * policies * calls * lines == 1u << 16);

    int line() const { return static_cast<int>(details / (calls * policies * channels)); }
    bool is_datagram() const { return details / (policies * channels) % calls; }
    uint32_t channel() const { return first_channel + details / policies % channels; }
    ErrorPolicy policy() const { return static_cast<ErrorPolicy>(details % policies); }

    // Returns the same route with the datagram call.
    constexpr Route by_datagram() const { return {function, details + channels * policies}; }
};

constexpr Route on(uint32_t channel, ErrorPolicy policy = ErrorPolicy::report,
                   const char *function = __builtin_FUNCTION(), uint32_t line = __builtin_LINE())
{
    return {function, (line % Route::lines * Route::calls * Route::channels + (channel - Route::first_channel)) *
                              Route::policies +
                          static_cast<uint32_t>(policy)};
}

// A failure that is not logged needs neither the operation's name nor its line.
constexpr Route silently_on(uint32_t channel)
{
    return on(channel, ErrorPolicy::silent, nullptr, 0);
}

// These are the size bounds of result databases in shared memory.
constexpr uint32_t small_view = 10240;
constexpr uint32_t large_view = 1048576;

// A Room describes a response buffer: its size in bytes, all of which are cleared, and how many of them the response
// length word offers. Both numbers share one word, because functions pass it on to others.
enum class Room : uint32_t {};

constexpr Room room_of(uint32_t size, uint32_t offered)
{
    return Room{size << 16 | offered};
}
constexpr uint32_t size_of(Room room)
{
    return static_cast<uint32_t>(room) >> 16;
}
constexpr uint32_t offered_of(Room room)
{
    return static_cast<uint32_t>(room) & 0xFFFF;
}

// `whole` offers a whole record. `unoffered` offers no byte of it on purpose, because the answer comes another way.
template <class Record>
constexpr Room whole = room_of(sizeof(Record), sizeof(Record));
template <class Record>
constexpr Room unoffered = room_of(sizeof(Record), 0);
// The answers of views have this room, whatever their request is.
constexpr Room view_room = whole<bsp_pon_msg_ext>;

// Sets `length` bytes to zero. This is a function of its own, because the compiler's own way to clear a record of known
// size is slower and larger.
void clear(void *record, uint32_t length);

// Writes the log line that the failure asks for. Returns the result of an operation whose exchange failed with
// `ipc_result`.
[[gnu::cold]] uint32_t failed(int32_t ipc_result, Route route);

FRAME_SHARED uint32_t set(const void *record, uint32_t length, Route route)
{
    uint32_t status = BSP_OK;
    const int32_t ipc_result = ipc_set_exec(BSP_IPC_MODULE, route.channel(), record, length, &status);
    return ipc_result ? failed(ipc_result, route) : status;
}

// Sends a record and returns the service's status word.
template <class Record>
FRAME_INLINE uint32_t set(const Record &record, Route route)
{
    return set(&record, sizeof record, route);
}

FRAME_SHARED uint32_t get_into(const void *request, uint32_t request_length, void *response, uint32_t length,
                               Route route)
{
    uint32_t status = BSP_OK;
    const int32_t ipc_result =
        ipc_get_exec(BSP_IPC_MODULE, route.channel(), request, request_length, response, &length, &status);
    return ipc_result ? failed(ipc_result, route) : status;
}

// Sends a record and receives at most `length` bytes of the answer in `response`. Returns the service's status word.
template <class Record>
FRAME_INLINE uint32_t get_into(const Record &request, void *response, uint32_t length, Route route)
{
    return get_into(&request, sizeof request, response, length, route);
}

FRAME_SHARED uint32_t get_in_place(void *record, uint32_t length, Route route)
{
    return get_into(record, length, record, length, route);
}

// Sends a record and receives the answer in the same record. Returns the service's status word.
template <class Record>
FRAME_INLINE uint32_t get_in_place(Record &record, Route route)
{
    return get_in_place(&record, sizeof record, route);
}

// Copies `count` bytes of what a response holds. Zeros stand for the bytes behind its end.
FRAME_SHARED void deliver(const void *held, uint32_t size, void *out, uint32_t count)
{
    const uint32_t copied = count < size ? count : size;
    __builtin_memcpy(out, held, copied);
    if (copied < count) clear(static_cast<char *>(out) + copied, count - copied);
}

// A Response is the buffer that a get call fills.
class Response
{
public:
    // Sends a record and receives the answer here. Returns true when the service answered: then `result` is its status
    // word. Returns false when the exchange failed: then `result` is that of the operation.
    FRAME_SHARED bool receive(const void *request, uint32_t request_length, Room room, uint32_t &result, Route route)
    {
        clear(bytes, size_of(room));
        uint32_t length = offered_of(room);
        uint32_t status = BSP_OK;
        const int32_t ipc_result = (route.is_datagram() ? ipc_dgram_get_exec : ipc_get_exec)(
            BSP_IPC_MODULE, route.channel(), request, request_length, bytes, &length, &status);
        result = ipc_result ? failed(ipc_result, route) : status;
        return ipc_result == 0;
    }

    // Returns the text at `offset`. It ends within the response's `size` bytes.
    const char *text(uint32_t size, uint32_t offset)
    {
        bytes[size - 1] = '\0';
        return bytes + offset;
    }

    // Copies `count` bytes from `offset` on of the response's `size` bytes. Zeros stand for the bytes behind their end.
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
    alignas(uint32_t) char bytes[sizeof(bsp_onu_msg)]; // the longest record
};

FRAME_SHARED uint32_t get_database(const void *request, uint32_t request_length, Room room, const uint32_t &key,
                                   uint32_t bound, db_handle **out, Route route)
{
    Response response;
    uint32_t result;
    if (response.receive(request, request_length, room, result, route)) *out = db_from_shmem(key, bound);
    return result;
}

// Sends a record. Then stores the handle of the database that the service left in shared memory under `key`, and that
// has at most `bound` bytes. The `key` is read only after the exchange. Returns the service's status word.
template <class Record>
FRAME_INLINE uint32_t get_database(const Record &request, Room room, const uint32_t &key, uint32_t bound,
                                   db_handle **out, Route route)
{
    return get_database(&request, sizeof request, room, key, bound, out, route);
}

FRAME_SHARED uint32_t get_block(const void *request, uint32_t request_length, Room room, uint32_t offset, void *out,
                                uint32_t count, Route route)
{
    Response response;
    uint32_t result;
    if (response.receive(request, request_length, room, result, route))
        response.copy(size_of(room), offset, out, count);
    return result;
}

// Sends a record. Then copies `count` bytes that start at `offset` of the response, and zeros for the bytes that it
// does not hold. Returns the service's status word.
template <class Record>
FRAME_INLINE uint32_t get_block(const Record &request, uint32_t offset, void *out, uint32_t count, Route route,
                                Room room = whole<Record>)
{
    return get_block(&request, sizeof request, room, offset, out, count, route);
}

FRAME_SHARED bool get_text_database(const void *request, uint32_t request_length, Room room, uint32_t offset,
                                    db_handle **out, uint32_t &result, Route route)
{
    Response response;
    if (!response.receive(request, request_length, room, result, route)) return false;
    *out = db_from_string(response.text(size_of(room), offset));
    return true;
}

// Sends a record. Then makes a database of the text that starts at `offset` of the response. Returns true when the
// service answered: then `result` is its status word. Returns false when the exchange failed: then `result` is that of
// the operation.
template <class Record>
FRAME_INLINE bool get_text_database(const Record &request, Room room, uint32_t offset, db_handle **out,
                                    uint32_t &result, Route route)
{
    return get_text_database(&request, sizeof request, room, offset, out, result, route);
}

// Sends a record. Then copies the text that starts at `offset` of the response, unless `out` is null. Returns the
// service's status word.
template <class Record>
FRAME_SHARED uint32_t get_text(const Record &request, Room room, uint32_t offset, char *out, Route route)
{
    Response response;
    uint32_t result;
    if (response.receive(&request, sizeof request, room, result, route) && out)
        __builtin_strcpy(out, response.text(size_of(room), offset));
    return result;
}

} // namespace frame
