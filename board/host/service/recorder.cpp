// This file records exchanges for services. See board/service.h.
#include <memory>
#include <new>

#include "answering.h"
#include "board/service.h"
#include "board/trace.h"
#include "trace_writer.h"

struct board_recorder {
    explicit board_recorder(const char *file) : writer(file, BOARD_TRACE_SERVICE_TIME) {}

    board::TraceWriter writer;
};

board_recorder *board_recorder_open(const char *file)
{
    std::unique_ptr<board_recorder> recorder(new (std::nothrow) board_recorder(file));
    return recorder && recorder->writer.is_on() ? recorder.release() : nullptr;
}

void board_recorder_write(board_recorder *recorder, uint64_t time, uint32_t module, const board_request *request,
                          const board_answer *answer)
{
    using namespace board;
    const int32_t ipc_result = answer ? answer->frame.header.ipc_result : IPC_ERR_REFUSED;
    Reply reply;
    if (ipc_result == IPC_OK) {
        const AnswerHeader &header = answer->frame.header;
        reply = {header.status, answer->frame.data, header.length, header.result};
    }
    std::unique_ptr<char[]> result;
    if (reply.result.in_memory() && reply.result.length <= BOARD_RESULT_MAX)
        result.reset(new (std::nothrow) char[reply.result.length]);
    const bool carried = result && answer->memory.copy(reply.result, result.get());
    const Call call{request->call, module, request->msg_type, request->data, request->length, request->allowed};
    recorder->writer.write(time, {request->pid, 0}, call, ipc_result, reply,
                           {result.get(), carried ? reply.result.length : 0});
}

void board_recorder_note(board_recorder *recorder, uint64_t time, uint32_t module, uint32_t msg_type, const void *note,
                         uint32_t length)
{
    if (length > BOARD_NOTE_MAX) return;
    recorder->writer.note(time, module, msg_type, {static_cast<const char *>(note), length});
}

void board_recorder_close(board_recorder *recorder)
{
    delete recorder;
}
