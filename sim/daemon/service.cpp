#include "daemon/service.h"

#include <algorithm>
#include <cstdlib>
#include <shared_mutex>
#include <stdexcept>

#include <unistd.h>

#include "board/ipc.h"
#include "board/util.h"
#include "bsp_pon.h"
#include "control/control.h"
#include "control/fault_forms.h"
#include "daemon/console.h"
#include "handlers/handler.h"

namespace ponsim
{
namespace
{

static_assert(max_result == BOARD_RESULT_MAX && max_answer == IPC_MAX_LENGTH && max_answer_delay == BOARD_DELAY_MAX &&
              max_answer_repeats == BOARD_REPEAT_MAX);

catalogue::Call call_of(const board_request &request)
{
    switch (request.call) {
    case BOARD_CALL_SET:
        return catalogue::Call::set;
    case BOARD_CALL_GET:
        return catalogue::Call::get;
    case BOARD_CALL_DGRAM_SET:
        return catalogue::Call::dgram_set;
    case BOARD_CALL_DGRAM_GET:
        return catalogue::Call::dgram_get;
    }
    throw std::logic_error("a call that the service does not know");
}

Message message_of(const board_request &request)
{
    return {request.msg_type, request.data, request.length, call_of(request)};
}

// Returns the answer with the name of a result file in it.
std::string naming(std::string answer, const ResultFile &file, const std::string &name)
{
    if (answer.size() < file.name_at + name.size() + 1) answer.resize(file.name_at + name.size() + 1);
    answer.replace(file.name_at, name.size(), name);
    return answer;
}

// Applies a fault that concerns the way of an answer to the client.
void misdirect(board_answer *answer, const FaultCase &fault)
{
    switch (fault.fault.kind) {
    case FaultKind::late:
        return board_answer_delay(answer, fault.fault.value);
    case FaultKind::lost:
        return board_answer_drop(answer);
    case FaultKind::duplicated:
        return board_answer_repeat(answer, fault.fault.value);
    default:
        return;
    }
}

// Ends the service as if it were killed here, when that is one of the faults.
void die_of(std::span<const FaultCase> faults, KillPoint point)
{
    for (const FaultCase &fault : faults)
        if (fault.fault.kind == FaultKind::kill && fault.fault.value == static_cast<uint32_t>(point))
            _exit(EXIT_FAILURE);
}

// Answers with what the service says, as long as that is no file.
void answer_with(const Reply &reply, const Message &message, board_answer *answer)
{
    board_answer_status(answer, reply.status);
    if (!reply.problem.empty()) userlog_err(__func__, __LINE__, "%s\n", reply.problem.c_str());
    if (!reply.understood || !is_get(message)) return;
    if (reply.answer)
        board_answer_data(answer, reply.answer->data(), static_cast<uint32_t>(reply.answer->size()));
    else
        board_answer_data(answer, message.data, message.length);
    if (reply.result)
        board_answer_result(answer, *command_of(message), reply.result->data(),
                            static_cast<uint32_t>(reply.result->size()));
}

void answer_with(Reply reply, const Message &message, std::span<const FaultCase> faults, ResultFiles &files,
                 board_answer *answer)
{
    for (const FaultCase &fault : faults) {
        spoil(reply, fault);
        misdirect(answer, fault);
    }
    if (reply.file)
        reply.answer = naming(reply.answer.value_or(std::string()), *reply.file, files.write(reply.file->content));
    if (!faults.empty() && reply.understood && is_get(message)) {
        if (!reply.answer) reply.answer.emplace(static_cast<const char *>(message.data), message.length);
        for (const FaultCase &fault : faults)
            spoil(*reply.answer, fault, message);
    }
    answer_with(reply, message, answer);
}

} // namespace

Service::Service(Simulator &served, Clock &time, Timekeeper &keeper, const Access &rules, const std::string &directory,
                 uint32_t mode, const std::string &record)
    : simulator(served), clock(time), timekeeper(keeper), access(rules), files(mode, directory)
{
    board_service_config config{};
    config.module = BSP_IPC_MODULE;
    config.directory = directory.c_str();
    config.socket_mode = mode;
    config.handler = handle;
    config.authorize = authorize;
    config.context = this;
    config.record = record.empty() ? nullptr : record.c_str();
    config.concurrent = 1;
    service.reset(board_service_start(&config));
    if (!service) return;
    config.module = control_module;
    config.record = nullptr;
    config.handler = handle_control;
    config.authorize = authorize_control;
    control.reset(board_service_start(&config));
    const std::lock_guard lock(turns);
    await_due();
}

void Service::stop()
{
    stopping = true;
    service.reset();
    control.reset();
    timekeeper.forget(*this);
}

void Service::await_due()
{
    const std::optional<ModelTime> due = simulator.next_due();
    timekeeper.set(*this, due ? clock.when(*due) : std::nullopt);
}

void Service::wake()
{
    constexpr std::chrono::seconds pause{1};
    const std::lock_guard lock(turns);
    try {
        simulator.advance(clock.now(), slice);
        write_log();
        await_due();
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "%s\n", error.what());
        timekeeper.set(*this, std::chrono::steady_clock::now() + pause);
    }
}

void Service::write_log()
{
    for (const std::string &line : simulator.take_log())
        userlog_debug("ponsim", __LINE__, "%s\n", line.c_str());
}

void Service::handle(void *context, const board_request *request, board_answer *answer)
{
    Service &self = *static_cast<Service *>(context);
    try {
        const Message message = message_of(*request);
        if (only_reads(message))
            if (const SharedReply reply = self.look(message)) return answer_with(*reply, message, answer);
        const std::lock_guard lock(self.turns);
        self.simulator.advance(self.clock.now());
        const std::vector<FaultCase> faults = self.simulator.faults().happen_to(message);
        for (const FaultCase &fault : faults)
            userlog_debug("ponsim", __LINE__, "fault %u happens\n", fault.number);
        die_of(faults, KillPoint::before);
        Reply reply = self.simulator.handle(message);
        die_of(faults, KillPoint::after);
        answer_with(std::move(reply), message, faults, self.files, answer);
        self.clock.reach(self.simulator.olt().now()); // a loaded configuration may be ahead of the clock
        self.write_log();
        self.await_due();
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "channel %u: %s\n", request->msg_type, error.what());
        board_answer_fail(answer, IPC_ERR_SERVICE);
    }
}

// What is kept may hold at the time of the clock already. Otherwise the OLT first follows the clock, which is done with
// a turn of its own, but takes no longer than what is due by then.
SharedReply Service::look(const Message &message)
{
    {
        const std::shared_lock lock(turns);
        if (SharedReply reply = simulator.look(message, clock.now())) return reply;
    }
    {
        const std::lock_guard lock(turns);
        if (simulator.faults().any()) return nullptr;
        simulator.advance(clock.now());
        write_log();
        await_due();
    }
    const std::shared_lock lock(turns);
    return simulator.look(message, simulator.olt().now());
}

std::string Service::carry_out(std::string_view line)
{
    if (const std::optional<ModelTime> length = step_length(line)) return carry_out_step(*length);
    const std::lock_guard lock(turns);
    simulator.advance(clock.now());
    std::string said = ponsim::control(simulator, clock, line);
    write_log();
    await_due();
    return said;
}

std::string Service::carry_out_step(ModelTime length)
{
    const std::lock_guard one_step(step_turns);
    Step step(simulator, clock, length);
    for (;;) {
        if (stopping) throw ControlError("step: the service stops");
        const std::lock_guard lock(turns);
        bool more = step.go_on();
        for (uint32_t slices = 1; more && slices < slices_together && !turns.wanted() && !stopping; ++slices)
            more = step.go_on();
        simulator.keep_happenings();
        write_log();
        if (more) continue;
        await_due();
        return time_passed(simulator);
    }
}

// The status is 0 when the line was carried out. The answer is what the command returned, or what is wrong with the
// line.
void Service::handle_control(void *context, const board_request *request, board_answer *answer)
{
    Service &self = *static_cast<Service *>(context);
    std::string said;
    try {
        said = self.carry_out({static_cast<const char *>(request->data), request->length});
    } catch (const std::exception &error) {
        said = error.what();
        board_answer_status(answer, 1);
    }
    board_answer_data(answer, said.data(), static_cast<uint32_t>(std::min<size_t>(said.size(), IPC_MAX_LENGTH)));
}

const char *Service::authorize_control(void *context, const board_request *request)
{
    thread_local std::string refusal; // of the request that this thread handles
    refusal = static_cast<Service *>(context)->access.refuse_control(request->uid);
    return refusal.empty() ? nullptr : refusal.c_str();
}

const char *Service::authorize(void *context, const board_request *request)
{
    thread_local std::string refusal; // of the request that this thread handles
    refusal = static_cast<Service *>(context)->access.refuse(request->uid, message_of(*request));
    return refusal.empty() ? nullptr : refusal.c_str();
}

} // namespace ponsim
