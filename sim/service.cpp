#include "service.h"

#include <exception>

#include "board/ipc.h"
#include "board/util.h"
#include "bsp_pon.h"
#include "handlers/handler.h"

namespace ponsim
{
namespace
{

static_assert(max_result == BOARD_RESULT_MAX);

Message message_of(const board_request &request)
{
    return {request.msg_type, request.data, request.length};
}

bool is_get(const board_request &request)
{
    return request.call == BOARD_CALL_GET || request.call == BOARD_CALL_DGRAM_GET;
}

void answer_with(const Reply &reply, const board_request &request, board_answer *answer)
{
    board_answer_status(answer, reply.status);
    if (!reply.problem.empty()) userlog_err(__func__, __LINE__, "%s\n", reply.problem.c_str());
    if (!reply.understood || !is_get(request)) return;
    board_answer_data(answer, request.data, request.length);
    if (reply.result)
        board_answer_result(answer, *command_of(message_of(request)), reply.result->data(),
                            static_cast<uint32_t>(reply.result->size()));
}

} // namespace

Service::Service(Simulator &served, const Access &rules, const std::string &directory, uint32_t mode)
    : simulator(served), access(rules)
{
    board_service_config config{};
    config.module = BSP_IPC_MODULE;
    config.directory = directory.c_str();
    config.socket_mode = mode;
    config.handler = handle;
    config.authorize = authorize;
    config.context = this;
    service.reset(board_service_start(&config));
}

void Service::handle(void *context, const board_request *request, board_answer *answer)
{
    try {
        answer_with(static_cast<Service *>(context)->simulator.handle(message_of(*request)), *request, answer);
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "channel %u: %s\n", request->msg_type, error.what());
        board_answer_fail(answer, IPC_ERR_SERVICE);
    }
}

const char *Service::authorize(void *context, const board_request *request)
{
    Service &self = *static_cast<Service *>(context);
    self.refusal = self.access.refuse(request->uid, message_of(*request), is_get(*request));
    return self.refusal.empty() ? nullptr : self.refusal.c_str();
}

} // namespace ponsim
