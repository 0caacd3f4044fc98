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

static_assert(result_file_name == BOARD_RESULT_FILE && max_result == BOARD_RESULT_MAX && max_answer == IPC_MAX_LENGTH &&
              max_answer_delay == BOARD_DELAY_MAX && max_answer_repeats == BOARD_REPEAT_MAX);

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
    return {request.msg_type, request.data, request.length, call_of(request), request.uid};
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

void deliver(const Delivery &delivery, board_answer *answer)
{
    board_answer_status(answer, delivery.status);
    board_answer_data(answer, delivery.answer.data(), static_cast<uint32_t>(delivery.answer.size()));
    if (delivery.result_key != 0)
        board_answer_result(answer, delivery.result_key, delivery.result.data(),
                            static_cast<uint32_t>(delivery.result.size()));
    if (delivery.file) board_answer_file(answer, delivery.file->data(), static_cast<uint32_t>(delivery.file->size()));
}

std::string result_of(uint32_t status)
{
    const catalogue::Status *known = catalogue::find_status(status);
    return known ? std::string(known->name) : std::to_string(status);
}

void answer_with(const Reply &reply, const Message &message, board_answer *answer)
{
    if (!reply.problem.empty()) userlog_err(__func__, __LINE__, "%s\n", reply.problem.c_str());
    deliver(delivery_of(reply, message), answer);
}

} // namespace

Service::Service(Simulator &served, Clock &time, Timekeeper &keeper, const Access &rules, const std::string &directory,
                 uint32_t mode, Journal &recorded, Audit &kept)
    : simulator(served), clock(time), timekeeper(keeper), access(rules), journal(recorded), audit(kept)
{
    board_service_config config{};
    config.module = BSP_IPC_MODULE;
    config.directory = directory.c_str();
    config.socket_mode = mode;
    config.handler = handle;
    config.authorize = authorize;
    config.context = this;
    config.concurrent = 1;
    service.reset(board_service_start(&config));
    if (!service) return;
    config.module = control_module;
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
        const bool stored = follow_clock(slice);
        write_log();
        if (!stored) return timekeeper.set(*this, std::chrono::steady_clock::now() + pause);
        await_due();
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "%s\n", error.what());
        timekeeper.set(*this, std::chrono::steady_clock::now() + pause);
    }
}

bool Service::follow_clock(uint32_t happenings)
{
    try {
        if (happenings == UINT32_MAX)
            simulator.advance(clock.now());
        else
            simulator.advance(clock.now(), happenings);
    } catch (const StoreError &error) {
        if (!std::exchange(unstored, true))
            userlog_err(__func__, __LINE__,
                        "the state cannot be stored: %s; requests that change something are refused until it can\n",
                        error.what());
        return false;
    }
    if (std::exchange(unstored, false)) userlog_err(__func__, __LINE__, "the state is stored again\n");
    return true;
}

// While the session is recorded, requests are answered one after the other, so that the recording happens again alike.
std::optional<Loading> Service::load(const Message &message)
{
    std::optional<Uploads::Taken> taken;
    if (!journal.is_on()) {
        const std::lock_guard lock(turns);
        taken = simulator.take_upload(message);
    }
    if (!taken) return std::nullopt;
    return read_loading(*taken, simulator.settings());
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
        // What is recorded has a turn of its own, so that it stands in the order in which it was answered.
        if (only_reads(message) && !self.journal.is_on())
            if (const SharedReply reply = self.look(message)) return answer_with(*reply, message, answer);
        std::optional<Loading> loading = self.load(message);
        const std::lock_guard lock(self.turns);
        self.follow_clock();
        const ModelTime now = self.simulator.olt().now();
        const std::string result = self.answer(message, answer, loading ? &*loading : nullptr);
        self.journal.record(now, BSP_IPC_MODULE, *request, answer);
        self.audit.note(*request, message, result);
        self.clock.reach(self.simulator.olt().now()); // a loaded configuration may be ahead of the clock
        self.write_log();
        self.await_due();
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "channel %u: %s\n", request->msg_type, error.what());
        board_answer_fail(answer, IPC_ERR_SERVICE);
    }
}

std::string Service::answer(const Message &message, board_answer *answer, Loading *loading)
{
    try {
        const std::vector<FaultCase> faults = simulator.faults().happen_to(message);
        for (const FaultCase &fault : faults)
            userlog_debug("ponsim", __LINE__, "fault %u happens\n", fault.number);
        die_of(faults, KillPoint::before);
        Reply reply = simulator.handle(message, loading);
        die_of(faults, KillPoint::after);
        complete(reply, message, faults);
        for (const FaultCase &fault : faults)
            misdirect(answer, fault);
        answer_with(reply, message, answer);
        return result_of(reply.status);
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "channel %u: %s\n", message.channel, error.what());
        board_answer_fail(answer, IPC_ERR_SERVICE);
        return std::string("failed: ") + error.what();
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
        follow_clock();
        write_log();
        await_due();
    }
    const std::shared_lock lock(turns);
    return simulator.look(message, simulator.olt().now());
}

void Service::let_pass(ModelTime length)
{
    Step step(simulator, clock, length);
    for (bool more = true; more;) {
        if (stopping) throw ControlError("step: the service stops");
        const std::lock_guard lock(turns);
        more = step.go_on();
        for (uint32_t slices = 1; more && slices < slices_together && !turns.wanted() && !stopping; ++slices)
            more = step.go_on();
        simulator.keep_happenings();
        write_log();
    }
}

// The answer is what the command returned, or what is wrong with the line.
void Service::handle_control(void *context, const board_request *request, board_answer *answer)
{
    Service &self = *static_cast<Service *>(context);
    const std::string_view line{static_cast<const char *>(request->data), request->length};
    const auto say = [&](uint32_t status, std::string_view said) { deliver(delivery_of(status, said), answer); };
    try {
        const std::optional<ModelTime> length = step_length(line);
        std::unique_lock one_step(self.step_turns, std::defer_lock);
        if (length) {
            one_step.lock();
            self.let_pass(*length);
        }
        const std::lock_guard lock(self.turns);
        if (!length) self.follow_clock();
        const ModelTime now = self.simulator.olt().now();
        try {
            say(control_done, length ? time_passed(self.simulator) : ponsim::control(self.simulator, self.clock, line));
            self.audit.note_control(*request, "done");
        } catch (const std::exception &error) {
            say(control_refused, error.what());
            self.audit.note_control(*request, std::string("failed: ") + error.what());
        }
        self.journal.record(now, control_module, *request, answer);
        self.write_log();
        self.await_due();
    } catch (const std::exception &error) {
        say(control_refused, error.what());
    }
}

const char *Service::authorize_control(void *context, const board_request *request)
{
    Service &self = *static_cast<Service *>(context);
    const std::string reason = self.access.refuse_control(Asker(*request));
    if (reason.empty()) return nullptr;
    self.audit.note_refused_control(*request, reason);
    return self.refuse(control_module, *request, reason);
}

const char *Service::authorize(void *context, const board_request *request)
{
    Service &self = *static_cast<Service *>(context);
    const Message message = message_of(*request);
    const std::string reason = self.access.refuse(Asker(*request), message);
    if (reason.empty()) return nullptr;
    self.audit.note_refused(*request, message, reason);
    return self.refuse(BSP_IPC_MODULE, *request, reason);
}

const char *Service::refuse(uint32_t module, const board_request &request, std::string reason)
{
    thread_local std::string refusal; // of the request that this thread handles
    refusal = std::move(reason);
    if (journal.is_on()) {
        const std::lock_guard lock(turns);
        journal.record(simulator.olt().now(), module, request, nullptr);
    }
    return refusal.c_str();
}

} // namespace ponsim
