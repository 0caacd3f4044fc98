#include "results/recording.h"

#include <algorithm>
#include <bit>
#include <ctime>
#include <functional>

#include "board/ipc.h"
#include "call/codec/decode.h"
#include "output/exit_code.h"
#include "output/report.h"

namespace ponctl
{
namespace
{

constexpr int host_order = std::endian::native == std::endian::big ? BOARD_TRACE_BIG_ENDIAN : BOARD_TRACE_LITTLE_ENDIAN;

// Returns the record for a request of this length: the channel's own record, or another record of exactly that length.
const catalogue::Record &record_of(const catalogue::Channel &channel, size_t length)
{
    if (!channel.record->payload && channel.record->size != length)
        for (const catalogue::Record &record : catalogue::records())
            if (record.size == length) return record;
    return *channel.record;
}

} // namespace

Traced::Traced(const board_trace_entry &entry, bool swapped, int times)
    : record(entry.record),
      clock(times),
      channel(record.module == catalogue::module ? catalogue::find_channel(record.msg_type) : nullptr),
      request(entry.request, entry.request + record.request_length),
      response(entry.response, entry.response + record.response_length),
      result(entry.result ? entry.result : "", record.result_carried)
{
    if (!channel) return;
    kind = &record_of(*channel, request.size());
    if (swapped) swap_words(*kind, role(), request);
    command = command_of(*kind, role(), request);
    if (swapped) swap_words(answer_record(*kind, command), role(true), response);
}

void Traced::hide_secrets()
{
    if (!channel) return;
    request = without_secrets(*kind, role(), request);
    const Bytes shown = without_secrets(answer_record(*kind, command), role(true), response);
    if (shown != response && !result.empty()) result = "***";
    response = shown;
}

Reading Traced::reading(bool of_answer) const
{
    return read_record(of_answer ? answer_record(*kind, command) : *kind, role(of_answer), bytes(of_answer));
}

std::optional<uint32_t> Traced::code() const
{
    if (!kind || !kind->command || request.size() < kind->command->offset + sizeof(uint32_t)) return std::nullopt;
    return load_word(request.data() + kind->command->offset);
}

std::string Traced::command_text() const
{
    if (command) return std::string(command->name);
    if (const auto number = code()) return std::to_string(*number);
    const bool text =
        !request.empty() && std::ranges::all_of(request, [](uint8_t byte) { return byte >= ' ' && byte <= '~'; });
    return text && !channel ? std::string(request.begin(), request.end()) : "-";
}

std::string Traced::channel_text() const
{
    if (channel) return std::string(channel->name);
    const std::string number = std::to_string(record.msg_type);
    return record.module == catalogue::module ? number : number + " of module " + std::to_string(record.module);
}

std::string Traced::outcome() const
{
    if (answered()) return describe_status(record.status);
    return "IPC failure " + std::to_string(record.ipc_result) + ": " + ipc_strerror(record.ipc_result);
}

std::string Traced::time() const
{
    constexpr uint64_t second = 1000000000;
    char fraction[16];
    std::snprintf(fraction, sizeof fraction, ".%06u", static_cast<unsigned>(record.time % second / 1000));
    if (clock == BOARD_TRACE_SERVICE_TIME) return std::to_string(record.time / second) + fraction;
    const auto seconds = static_cast<std::time_t>(record.time / second);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char date[32];
    std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &parts);
    return std::string(date) + fraction + 'Z';
}

TraceFile::TraceFile(const std::string &file)
{
    const char *error = nullptr;
    trace.reset(board_trace_open(file.c_str(), &error));
    if (!trace) throw UsageError("FILE: cannot read '" + file + "': " + error);
}

bool TraceFile::is_foreign() const
{
    return board_trace_byte_order(trace.get()) != host_order;
}

std::optional<size_t> TraceFile::each(const std::function<void(const Traced &)> &show) const
{
    board_trace_entry entry;
    int more = 0;
    size_t count = 0;
    for (; (more = board_trace_next(trace.get(), &entry)) == 1; ++count)
        if (entry.record.call != BOARD_TRACE_NOTE) show(Traced(entry, is_foreign(), board_trace_clock(trace.get())));
    if (more == 0) return std::nullopt;
    return count;
}

} // namespace ponctl
