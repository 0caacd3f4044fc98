// This file reads recordings of services. board/trace.h describes them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "board/trace.h"

namespace ponsim
{

struct CloseTrace {
    void operator()(board_trace *trace) const { board_trace_close(trace); }
};
using Trace = std::unique_ptr<board_trace, CloseTrace>;

// Opens a recording whose words are in the byte order of this machine. Throws std::runtime_error, for another one with
// `what_to_do`.
Trace open_recording(const std::string &file, const std::string &what_to_do);

// Throws the error that the file is damaged at this record. Records are counted from 1.
[[noreturn]] void fail_damaged(const std::string &file, size_t record);

// Returns the command code of a request on a channel, or none when it carries no code.
std::optional<uint32_t> code_of(uint32_t channel, std::string_view request);

// Describes a request for people: its channel and its command.
std::string describe_request(uint32_t channel, uint32_t call, std::string_view request);

} // namespace ponsim
