// This file reads exchanges that a client or a service recorded. It reads them by the catalogue, as far as the
// catalogue knows their channels.
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

// A Traced is one exchange. What it points to lives until the next one is read.
struct Traced {
    // Its time is by this clock of board/trace.h.
    Traced(const board_trace_entry &entry, bool swapped, int clock);

    const board_trace_record &record;
    const int clock;
    const catalogue::Channel *channel; // null: unknown, or of another module
    const catalogue::Command *command = nullptr;
    const catalogue::Record *kind = nullptr; // the record of the request
    Bytes request, response;
    std::string_view result;

    RecordRole role(bool is_answer = false) const { return {channel, call(), command, is_answer}; }
    // Hides the secrets in its records, and a result that the answer names as a secret.
    void hide_secrets();
    const Bytes &bytes(bool of_answer) const { return of_answer ? response : request; }
    // Returns a record of the exchange, whose channel must be known.
    Reading reading(bool of_answer) const;
    bool answered() const { return record.ipc_result == 0; }
    // Returns the code of its command, known or not, or nothing when the record carries no code.
    std::optional<uint32_t> code() const;

    catalogue::Call call() const { return static_cast<catalogue::Call>(record.call); }
    std::string call_text() const { return std::string(catalogue::to_text(call())); }
    std::string channel_text() const;
    // Returns the command's name or number. A request of another module is its own name when it is a text.
    std::string command_text() const;
    std::string outcome() const;
    // Returns when the exchange ended: in Coordinated Universal Time, or in seconds of the service's own time.
    std::string time() const;
};

// A TraceFile is a recording, whoever wrote it.
class TraceFile
{
public:
    // Throws a UsageError when the file is no recording.
    explicit TraceFile(const std::string &file);

    // Returns whether the recording comes from a machine of the other byte order.
    bool is_foreign() const;
    // Passes each exchange to `show`, in order, and leaves out what a service noted for itself. Returns how many
    // records there were before the place where the file is damaged, or nothing when the file is whole.
    std::optional<size_t> each(const std::function<void(const Traced &)> &show) const;

private:
    struct Close {
        void operator()(board_trace *trace) const { board_trace_close(trace); }
    };

    std::unique_ptr<board_trace, Close> trace;
};

} // namespace ponctl
