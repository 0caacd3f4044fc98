#include "recording/replay.h"

#include <cstring>
#include <stdexcept>

#include "board/ipc.h"
#include "board/util.h"
#include "catalogue.h"
#include "recording/recorded.h"

namespace ponsim
{
namespace
{

// Returns whether a client failed in this way without the service, so that there was nothing to answer.
bool never_arrived(int32_t ipc_result)
{
    return ipc_result == IPC_ERR_NO_SERVICE || ipc_result == IPC_ERR_ACCESS || ipc_result == IPC_ERR_TOO_LONG ||
           ipc_result == IPC_ERR_SYSTEM;
}

std::string describe(const board_request &request)
{
    return describe_request(request.msg_type, request.call, {static_cast<const char *>(request.data), request.length});
}

} // namespace

Recording::Recording(const std::string &file)
{
    const Trace trace =
        open_recording(file, "the words of its answers would reach the clients of this one turned round; "
                             "replay it on such a machine (ponctl trace shows it here)");
    board_trace_entry entry;
    int more = 0;
    size_t record = 1;
    for (; (more = board_trace_next(trace.get(), &entry)) == 1; ++record) {
        const board_trace_record &read = entry.record;
        const bool exchange = read.module == catalogue::module && read.call != BOARD_TRACE_NOTE;
        if (!exchange || never_arrived(read.ipc_result)) continue;
        const RequestKey request{read.call, read.msg_type, {entry.request, entry.request + read.request_length}};
        by_bytes[request].answers.push_back(answers.size());
        if (const auto command = command_of(request)) by_command[*command].answers.push_back(answers.size());
        answers.push_back({read.ipc_result,
                           read.status,
                           {entry.response, entry.response + read.response_length},
                           read.result_key,
                           read.result_length,
                           {entry.result, read.result_carried}});
    }
    if (more < 0) fail_damaged(file, record);
    if (answers.empty()) throw std::runtime_error(file + ": holds no exchange with the PON service");
}

std::optional<Recording::RequestKey> Recording::command_of(const RequestKey &request)
{
    const auto code = code_of(request.channel, request.bytes);
    if (!code) return std::nullopt;
    return RequestKey{request.call, request.channel, std::to_string(*code)};
}

const Recording::RecordedAnswer *Recording::step(Sequence &sequence, bool looping)
{
    const RecordedAnswer &answer = answers[sequence.answers[sequence.at]];
    if (sequence.at + 1 < sequence.answers.size())
        ++sequence.at;
    else if (looping)
        sequence.at = 0;
    return &answer;
}

Recording::Found Recording::next(const board_request &received, bool looping)
{
    const auto *const bytes = static_cast<const char *>(received.data);
    const RequestKey request{static_cast<uint32_t>(received.call), received.msg_type, {bytes, bytes + received.length}};
    if (const auto found = by_bytes.find(request); found != by_bytes.end()) return {step(found->second, looping), true};
    const auto command = command_of(request);
    const auto found = command ? by_command.find(*command) : by_command.end();
    return {found == by_command.end() ? nullptr : step(found->second, looping), false};
}

Replay::Replay(Recording &replayed, bool over_and_over, const std::string &directory, uint32_t mode)
    : recording(replayed), looping(over_and_over)
{
    board_service_config config{};
    config.module = catalogue::module;
    config.directory = directory.c_str();
    config.socket_mode = mode;
    config.handler = handle;
    config.context = this;
    service.reset(board_service_start(&config));
}

void Replay::handle(void *context, const board_request *request, board_answer *answer)
{
    Replay &self = *static_cast<Replay *>(context);
    const Recording::Found found = self.recording.next(*request, self.looping);
    if (!found.answer) {
        userlog_err("ponsim", __LINE__, "%s: not recorded\n", describe(*request).c_str());
        return board_answer_fail(answer, IPC_ERR_SERVICE);
    }
    if (!found.same_bytes)
        userlog_err("ponsim", __LINE__, "%s: not recorded with these bytes; answered as it was with others\n",
                    describe(*request).c_str());
    const Recording::RecordedAnswer &recorded = *found.answer;
    if (recorded.ipc_result != IPC_OK) return board_answer_fail(answer, recorded.ipc_result);
    board_answer_status(answer, recorded.status);
    board_answer_data(answer, recorded.response.data(), static_cast<uint32_t>(recorded.response.size()));
    // A result that was too long to travel is too long again. Only its length matters.
    const bool whole = recorded.result.size() == recorded.result_length;
    if (recorded.result_key == BOARD_TRACE_FILE) {
        if (whole) board_answer_file(answer, recorded.result.data(), recorded.result_length);
        return;
    }
    if (recorded.result_key != 0 && (whole || recorded.result_length > BOARD_RESULT_MAX))
        board_answer_result(answer, recorded.result_key, recorded.result.data(), recorded.result_length);
}

} // namespace ponsim
