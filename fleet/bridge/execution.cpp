#include "fleet/bridge/execution.h"

#include <algorithm>

#include "audit/entry.h"
#include "board/ipc.h"
#include "board/service.h"
#include "fleet/bridge/permission.h"
#include "fleet/protocol/message.h"

namespace fleet
{
namespace
{

using std::chrono::milliseconds;

// No exchange is waited for longer.
constexpr uint32_t longest_exchange = 60'000; // milliseconds

// Counts brackets, also those of a text that is not JSON.
bool is_too_deep(std::string_view text)
{
    size_t depth = 0;
    bool quoted = false;
    for (size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (quoted && character == '\\')
            ++at;
        else if (character == '"')
            quoted = !quoted;
        else if (!quoted && (character == '{' || character == '['))
            if (++depth > deepest_request) return true;
        if (!quoted && depth > 0 && (character == '}' || character == ']')) --depth;
    }
    return false;
}

Request request_of(const Incoming &incoming)
{
    if (is_too_deep(incoming.text))
        throw call::UsageError("the request: nested deeper than " + std::to_string(deepest_request) + " levels");
    return request_from_json(incoming.text);
}

std::optional<Clock::time_point> end_of(const Incoming &incoming, const Request &request)
{
    std::optional<uint32_t> left = incoming.expiry;
    if (request.deadline != 0) left = std::min(left.value_or(UINT32_MAX), request.deadline);
    if (!left) return std::nullopt;
    return incoming.came + milliseconds(*left);
}

// What is known of the effect of an exchange that failed.
enum class Effect : uint8_t { none, unreachable, unknown };

Effect effect_of(int32_t ipc_result)
{
    switch (ipc_result) {
    case IPC_ERR_NO_SERVICE:
    case IPC_ERR_ACCESS:
    case IPC_ERR_INCOMPATIBLE:
    case IPC_ERR_SYSTEM:
        return Effect::unreachable;
    case IPC_ERR_REFUSED:
    case IPC_ERR_TOO_LONG:
    case IPC_ERR_SERVICE:
        return Effect::none;
    default:
        return Effect::unknown;
    }
}

std::string status_text(uint32_t status)
{
    const catalogue::Status *known = catalogue::find_status(status);
    return known ? std::string(known->name) : std::to_string(status);
}

// A Performed is the answer, and how the audit log says it.
struct Performed {
    int32_t ipc_result;
    bool sent;
    std::string answer, result;
};

Performed perform(const Request &request, OltPermission &permission)
{
    if (const auto *asked = std::get_if<call::Call>(&request.what)) {
        const call::Outcome outcome = call::perform(*asked, permission);
        return {outcome.ipc_result, outcome.sent, answer_of(outcome), status_text(outcome.status)};
    }
    const auto &asked = std::get<call::RecordCall>(request.what);
    const call::RecordOutcome outcome = call::perform(asked, permission);
    return {outcome.ipc_result, true, answer_of(outcome, asked), status_text(outcome.status)};
}

class Execution
{
public:
    Execution(const Incoming &came, const Executor &executor) : incoming(came), by(executor) {}

    std::string run()
    {
        try {
            return answer_to(request_of(incoming));
        } catch (const call::Error &error) {
            return decline({Problem::wrong, error.what()}, nullptr);
        }
    }

private:
    std::string answer_to(const Request &request)
    {
        doing = name_of_request(request);
        const auto *called = std::get_if<call::Call>(&request.what);
        const uint32_t own = called ? called->deadline.value_or(0) : 0;
        OltPermission permission({.olt = by.olt,
                                  .clients = by.clients,
                                  .incoming = incoming,
                                  .request = request,
                                  .end = end_of(incoming, request),
                                  .bound = std::min(own, longest_exchange)},
                                 by.journal, by.notes);
        const std::string answer = perform_with(request, permission);
        board_ipc_use_thread_timeout(0);
        return answer;
    }

    std::string perform_with(const Request &request, OltPermission &permission)
    {
        try {
            return conclude(perform(request, permission), permission);
        } catch (const Declined &declined) {
            return decline(declined.failure, &permission);
        } catch (const Repeated &repeated) {
            note(permission, "repeated: it was executed already");
            return repeated.answer;
        } catch (const std::exception &error) {
            if (!permission.has_begun()) return decline({Problem::wrong, error.what()}, &permission);
            return leave_unknown(error.what(), permission);
        }
    }

    std::string conclude(const Performed &performed, OltPermission &permission)
    {
        if (performed.ipc_result == IPC_OK) {
            permission.end(performed.answer);
            if (performed.sent) note(permission, performed.result);
            return performed.answer;
        }
        const std::string text = ipc_strerror(performed.ipc_result);
        const Effect effect = effect_of(performed.ipc_result);
        const bool is_reading = !permission.has_begun();
        if (effect == Effect::unknown && is_reading) return performed.answer;
        if (effect == Effect::unknown || !permission.undo()) return leave_unknown(text, permission);
        if (effect == Effect::unreachable) return decline({Problem::unavailable, text}, &permission);
        note(permission, text);
        return performed.answer;
    }

    std::string leave_unknown(const std::string &reason, OltPermission &permission)
    {
        const std::string answer = answer_of(Failure{Problem::unknown, reason});
        permission.end(answer);
        note(permission, "unknown: " + reason);
        return answer;
    }

    std::string decline(const Failure &failure, const OltPermission *permission)
    {
        const std::string result = std::string(name_of(failure.problem)) + ": " + failure.text;
        const bool was_to_be_sent = permission && permission->wanted();
        if (was_to_be_sent) {
            if (is_no_reading(*permission) && by.refusals.take(incoming.client)) note(*permission, result);
        } else if (incoming.impact != catalogue::Class::read && by.refusals.take(incoming.client)) {
            by.notes.audit(by.olt.name, audit::line_of(audit::time_of_day(), client(), doing, result));
        }
        return answer_of(failure);
    }

    static bool is_no_reading(const OltPermission &permission)
    {
        return permission.wanted() && permission.wanted()->impact != catalogue::Class::read;
    }

    void note(const OltPermission &permission, const std::string &result)
    {
        if (is_no_reading(permission))
            by.notes.audit(by.olt.name, audit::line_of(audit::time_of_day(), client(), *permission.wanted(), result));
    }

    audit::Client client() const { return {incoming.client, incoming.address, by.olt.name}; }

    static std::string name_of_request(const Request &request)
    {
        if (const auto *called = std::get_if<call::Call>(&request.what)) return "call " + called->operation;
        return "exchange on " + std::string(std::get<call::RecordCall>(request.what).channel->name);
    }

    const Incoming &incoming;
    const Executor &by;
    std::string doing = "a request that is not understood";
};

} // namespace

std::string execute(const Incoming &incoming, const Executor &by)
{
    return Execution(incoming, by).run();
}

} // namespace fleet
