// Exchanges that a client or a service recorded, read by the catalogue as far as that knows their channels.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "board/trace.h"
#include "call/codec/decode.h"
#include "output/exit_code.h"

namespace ponctl
{

// One exchange. What it points to lives until the next is read.
struct Traced {
    Traced(const board_trace_entry &entry, bool swapped);

    const board_trace_record &record;
    const catalogue::Channel *channel; // null: unknown
    const catalogue::Command *command = nullptr;
    const catalogue::Record *kind = nullptr; // of the request
    Bytes request, response;
    std::string_view result;

    Place place(bool is_answer = false) const { return {channel, call(), command, is_answer}; }
    const Bytes &bytes(bool of_answer) const { return of_answer ? response : request; }
    // Of a known channel.
    Reading reading(bool of_answer) const;
    bool answered() const { return record.ipc_result == 0; }
    // Its command's code, known or not; none where it carries none.
    std::optional<uint32_t> code() const;

    catalogue::Call call() const { return static_cast<catalogue::Call>(record.call); }
    std::string call_text() const { return std::string(catalogue::to_text(call())); }
    std::string channel_text() const { return channel ? std::string(channel->name) : std::to_string(record.msg_type); }
    std::string command_text() const;
    std::string outcome() const;
    // When the exchange ended, in Coordinated Universal Time.
    std::string time() const;
};

// A recording, whoever wrote it.
class TraceFile
{
public:
    // Throws a UsageError where the file is no recording.
    explicit TraceFile(const std::string &file);

    // Whether it comes from a machine of the other byte order.
    bool is_foreign() const;
    // Hands each exchange on, in order. Returns how many there were before the file is damaged; none where it is whole.
    std::optional<size_t> each(const std::function<void(const Traced &)> &show) const;

private:
    struct Close {
        void operator()(board_trace *trace) const { board_trace_close(trace); }
    };

    std::unique_ptr<board_trace, Close> trace;
};

} // namespace ponctl
