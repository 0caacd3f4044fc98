#include "trace_writer.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>

#include "board/trace.h"
#include "board/util.h"

static_assert(sizeof(board_trace_file) == 16 && sizeof(board_trace_record) == 64);
static_assert(BOARD_TRACE_LITTLE_ENDIAN == board::little_endian && BOARD_TRACE_BIG_ENDIAN == board::big_endian);

namespace board
{
namespace
{

// The first process writes the file's header. The others must find the same header.
bool agree_on_header(int file, uint8_t clock)
{
    const board_trace_file own_header{BOARD_TRACE_MAGIC, BOARD_TRACE_VERSION, native_order, clock, {}};
    struct stat found;
    if (fstat(file, &found)) return false;
    if (found.st_size == 0) return write(file, &own_header, sizeof own_header) == sizeof own_header;
    board_trace_file header;
    errno = EINVAL;
    return pread(file, &header, sizeof header, 0) == sizeof header && !std::memcmp(&header, &own_header, sizeof header);
}

// Requests may carry secrets, so what another user made is not written to. It could be read, or its owner put it there
// in order to read it. A terminal or /dev/null keeps nothing.
bool is_of_another_user(int file)
{
    struct stat found;
    return !fstat(file, &found) && !S_ISCHR(found.st_mode) && found.st_uid != geteuid();
}

// Takes the permissions of other users from the file, also those that it had before, whatever the umask is.
void make_private(int file)
{
    struct stat found;
    if (!fstat(file, &found) && S_ISREG(found.st_mode) && (found.st_mode & 07777) != 0600) fchmod(file, 0600);
}

Descriptor open_trace(const char *name, uint8_t clock)
{
    if (!name || !*name) return {};
    Descriptor file(open(name, O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    if (file && is_of_another_user(file.get())) {
        userlog_err(__func__, __LINE__, "%s cannot be used for the trace: it belongs to another user", name);
        return {};
    }
    if (file && !flock(file.get(), LOCK_EX)) {
        const bool agreed = agree_on_header(file.get(), clock);
        if (agreed) make_private(file.get());
        flock(file.get(), LOCK_UN);
        if (agreed) return file;
    }
    userlog_err(__func__, __LINE__, "%s cannot be used for the trace: %s", name,
                errno == EINVAL ? "it is not a trace file of this version, byte order and clock"
                                : std::strerror(errno));
    return {};
}

uint64_t now()
{
    timespec time;
    clock_gettime(CLOCK_REALTIME, &time);
    return static_cast<uint64_t>(time.tv_sec) * 1000000000u + static_cast<uint64_t>(time.tv_nsec);
}

} // namespace

TraceWriter::TraceWriter(const char *name, uint8_t clock) : file(open_trace(name, clock)), on(static_cast<bool>(file))
{
}

void TraceWriter::write(uint64_t time, const ClientThread &client, const Call &call, int32_t ipc_result,
                        const Reply &reply, std::span<const char> result)
{
    board_trace_record record{};
    record.time = time;
    record.pid = static_cast<uint32_t>(client.process);
    record.tid = static_cast<uint32_t>(client.thread);
    record.call = call.call;
    record.module = call.module;
    record.msg_type = call.msg_type;
    record.allowed = call.allowed;
    record.ipc_result = ipc_result;
    record.status = reply.status;
    record.request_length = call.length;
    record.response_length = reply.length;
    record.result_key = reply.result.state == Result::file ? BOARD_TRACE_FILE : reply.result.key;
    record.result_length = reply.result.length;
    record.result_carried = static_cast<uint32_t>(result.size());
    append(record, call.request, reply.data, result.data());
}

void TraceWriter::note(uint64_t time, uint32_t module, uint32_t msg_type, std::span<const char> note)
{
    board_trace_record record{};
    record.time = time;
    record.call = BOARD_TRACE_NOTE;
    record.module = module;
    record.msg_type = msg_type;
    record.request_length = static_cast<uint32_t>(note.size());
    append(record, note.data(), nullptr, nullptr);
}

void TraceWriter::append(board_trace_record &record, const void *request, const void *response, const void *result)
{
    record.size =
        static_cast<uint32_t>(sizeof record + record.request_length + record.response_length + record.result_carried);
    const iovec parts[] = {{&record, sizeof record},
                           {const_cast<void *>(request), record.request_length},
                           {const_cast<void *>(response), record.response_length},
                           {const_cast<void *>(result), record.result_carried}};
    // Half a record would spoil the records that follow it, so nothing is written after the first failure.
    if (writev(file.get(), parts, 4) == static_cast<ssize_t>(record.size)) return;
    if (on.exchange(false)) userlog_err(__func__, __LINE__, "no more trace: %s", std::strerror(errno));
}

TraceWriter &clients_trace()
{
    // This is never destroyed, because handlers of exit() may make calls.
    static TraceWriter &writer = *new TraceWriter(std::getenv("BOARD_IPC_TRACE"), BOARD_TRACE_TIME_OF_DAY);
    return writer;
}

void trace_exchange(const Call &call, int32_t ipc_result, const Reply &reply, Transport &transport)
{
    std::vector<char> result;
    if (reply.result.in_memory() && reply.result.length <= BOARD_RESULT_MAX) {
        result.resize(reply.result.length);
        if (!transport.copy_result(reply.result, result.data())) result.clear();
    }
    const ClientThread self{getpid(), static_cast<pid_t>(syscall(SYS_gettid))};
    clients_trace().write(now(), self, call, ipc_result, reply, result);
}

} // namespace board
