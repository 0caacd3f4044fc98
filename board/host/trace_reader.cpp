#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include "board/trace.h"
#include "frame.h"

struct board_trace {
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> file{nullptr, &std::fclose};
    uint8_t byte_order = 0;
    uint8_t clock = BOARD_TRACE_TIME_OF_DAY;
    std::vector<uint8_t> bytes; // of the entry that was read last
};

namespace
{

// No record is longer than a request, a response and a result of the greatest lengths together.
constexpr uint32_t longest_record = sizeof(board_trace_record) + 2 * IPC_MAX_LENGTH + BOARD_RESULT_MAX;

template <class Word>
void swap(Word &word)
{
    unsigned char bytes[sizeof word];
    std::memcpy(bytes, &word, sizeof word);
    for (size_t at = 0; at < sizeof word / 2; ++at)
        std::swap(bytes[at], bytes[sizeof word - 1 - at]);
    std::memcpy(&word, bytes, sizeof word);
}

void swap_all(board_trace_record &record)
{
    swap(record.time);
    swap(record.ipc_result);
    for (uint32_t *word : {&record.size, &record.pid, &record.tid, &record.call, &record.module, &record.msg_type,
                           &record.allowed, &record.status, &record.request_length, &record.response_length,
                           &record.result_key, &record.result_length, &record.result_carried})
        swap(*word);
}

bool lengths_hold(const board_trace_record &record)
{
    const uint64_t sum =
        uint64_t{sizeof record} + record.request_length + record.response_length + record.result_carried;
    return sum == record.size && sum <= longest_record;
}

const char *open_file(board_trace &trace, const char *name)
{
    trace.file.reset(std::fopen(name, "rbe"));
    if (!trace.file) return std::strerror(errno);
    board_trace_file header;
    if (std::fread(&header, sizeof header, 1, trace.file.get()) != 1 ||
        std::memcmp(header.magic, BOARD_TRACE_MAGIC, sizeof header.magic))
        return "not a trace file";
    if (header.version != BOARD_TRACE_VERSION) return "a trace file of another version";
    if (header.byte_order != BOARD_TRACE_LITTLE_ENDIAN && header.byte_order != BOARD_TRACE_BIG_ENDIAN)
        return "a trace file of an unknown byte order";
    if (header.clock > BOARD_TRACE_SERVICE_TIME) return "a trace file of an unknown clock";
    trace.byte_order = header.byte_order;
    trace.clock = header.clock;
    return nullptr;
}

} // namespace

board_trace *board_trace_open(const char *file, const char **error)
{
    const char *why = "no memory";
    try {
        auto trace = std::make_unique<board_trace>();
        why = open_file(*trace, file);
        if (!why) return trace.release();
    } catch (...) {
    }
    if (error) *error = why;
    return nullptr;
}

int board_trace_byte_order(const board_trace *trace)
{
    return trace->byte_order;
}

int board_trace_clock(const board_trace *trace)
{
    return trace->clock;
}

int board_trace_next(board_trace *trace, board_trace_entry *entry)
{
    std::FILE *const file = trace->file.get();
    board_trace_record &record = entry->record;
    const size_t got = std::fread(&record, 1, sizeof record, file);
    if (got == 0 && std::feof(file)) return 0;
    if (got != sizeof record) return -1;
    if (trace->byte_order != board::native_order) swap_all(record);
    if (!lengths_hold(record)) return -1;
    const size_t length = record.size - sizeof record;
    try {
        trace->bytes.resize(length);
    } catch (...) {
        return -1;
    }
    if (length && std::fread(trace->bytes.data(), length, 1, file) != 1) return -1;
    entry->request = trace->bytes.data();
    entry->response = entry->request + record.request_length;
    entry->result = reinterpret_cast<const char *>(entry->response + record.response_length);
    return 1;
}

void board_trace_close(board_trace *trace)
{
    delete trace;
}
