#include "recording/recorded.h"

#include <bit>
#include <cstring>
#include <stdexcept>

#include "catalogue.h"

namespace ponsim
{
namespace
{

constexpr int host_order = std::endian::native == std::endian::big ? BOARD_TRACE_BIG_ENDIAN : BOARD_TRACE_LITTLE_ENDIAN;

} // namespace

Trace open_recording(const std::string &file, const std::string &what_to_do)
{
    const char *error = nullptr;
    Trace trace(board_trace_open(file.c_str(), &error));
    if (!trace) throw std::runtime_error(file + ": " + error);
    if (board_trace_byte_order(trace.get()) != host_order)
        throw std::runtime_error(file + ": recorded on a machine of the other byte order: " + what_to_do);
    return trace;
}

void fail_damaged(const std::string &file, size_t record)
{
    throw std::runtime_error(file + ": damaged at record " + std::to_string(record));
}

std::optional<uint32_t> code_of(uint32_t channel, std::string_view request)
{
    const catalogue::Channel *known = catalogue::find_channel(channel);
    const catalogue::Field *command = known ? known->record->command : nullptr;
    uint32_t code;
    if (!command || request.size() < command->offset + sizeof code) return std::nullopt;
    std::memcpy(&code, request.data() + command->offset, sizeof code);
    return code;
}

std::string describe_request(uint32_t channel, uint32_t call, std::string_view request)
{
    const catalogue::Channel *known = catalogue::find_channel(channel);
    std::string text = known ? std::string(known->name) : "channel " + std::to_string(channel);
    if (const std::optional<uint32_t> code = code_of(channel, request)) {
        const auto known_call = static_cast<catalogue::Call>(call);
        const catalogue::Command *command = catalogue::find_command(channel, *code, known_call);
        text += ", command " + (command ? std::string(command->name) : std::to_string(*code));
    }
    return text;
}

} // namespace ponsim
