#include "snmp/agent/orders.h"

#include <chrono>

#include "board/ipc.h"
#include "call/call.h"
#include "call/exchange.h"

namespace front::snmp
{
namespace
{

using agentx::Error;
using Clock = std::chrono::steady_clock;

// Keeps what is about to be sent, for the audit log.
class Noted : public call::UpTo
{
public:
    using UpTo::UpTo;
    call::Verdict decide(const call::PermissionRequest &request) override
    {
        wanted = audit::wanted_by(request);
        return UpTo::decide(request);
    }

    audit::Wanted wanted{};
};

// Only finds out whether there is permission.
class Tried : public Noted
{
public:
    using Noted::Noted;
    call::Verdict decide(const call::PermissionRequest &request) override
    {
        Noted::decide(request);
        return call::Verdict::keep_back;
    }
};

enum class Done : uint8_t { yes, no, unknown };

struct Result {
    Done done;
    std::string text;
};

Result result_of(const call::Outcome &outcome)
{
    if (!outcome.sent) return {Done::no, "it was not sent"};
    switch (outcome.ipc_result) {
    case IPC_OK:
        break;
    case IPC_ERR_TIMEOUT:
    case IPC_ERR_PEER_LOST:
    case IPC_ERR_BROKEN_ANSWER:
    case IPC_ERR_SERVICE:
        return {Done::unknown, outcome.ipc_text};
    default:
        return {Done::no, outcome.ipc_text};
    }
    const std::string status = outcome.status_name.empty() ? std::to_string(outcome.status) : outcome.status_name;
    return {outcome.status == 0 ? Done::yes : Done::no, status};
}

call::Call call_of(const Order &order)
{
    call::Call asked{.id = {}, .operation = std::string(order.operation), .arguments = {}, .deadline = {}};
    for (const auto &[name, value] : order.arguments)
        asked.arguments.push_back({name, value});
    return asked;
}

Result perform(const Order &order, Noted &permission, Clock::time_point until)
{
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
    if (left <= 0) return {Done::no, "there was no time left for it"};
    call::Call asked = call_of(order);
    asked.deadline = static_cast<uint32_t>(left);
    try {
        return result_of(call::perform(asked, permission));
    } catch (const call::Error &error) {
        return {Done::no, error.what()};
    }
}

std::string words_of(const Order &order, const SetSettings::Olt &olt)
{
    std::string text = olt.name + ": set by SNMP: " + std::string(order.operation);
    for (const auto &[name, value] : order.arguments)
        if (name != "text") text += " " + name + "=" + value; // logs name no texts
    return text;
}

} // namespace

Error permit(const Order &order, const SetSettings &settings, const Notes &notes)
{
    const auto olt = settings.olts.find(order.olt_index);
    if (olt == settings.olts.end()) return Error::inconsistent_name;
    Tried permission(*settings.up_to);
    try {
        call::perform(call_of(order), permission);
    } catch (const call::Refused &refused) {
        notes.refused(olt->second.name, permission.wanted, refused.what());
        return Error::no_access;
    } catch (const call::Error &) {
        return Error::wrong_value;
    }
    return Error::none;
}

agentx::Committed carry_out(const std::vector<Order> &orders, const SetSettings &settings, const Notes &notes,
                            const std::function<void(bool, const std::string &)> &say)
{
    const Clock::time_point until = Clock::now() + std::chrono::seconds(order_time);
    agentx::Committed committed;
    for (size_t i = 0; i < orders.size(); ++i) {
        const SetSettings::Olt &olt = settings.olts.at(orders[i].olt_index);
        reach(olt.reach);
        Noted permission(*settings.up_to);
        const Result result = perform(orders[i], permission, until);
        notes.sent(olt.name, permission.wanted, result.text);
        committed.changed_nothing &= result.done == Done::no;
        if (result.done == Done::yes) {
            say(true, words_of(orders[i], olt) + ": done");
            continue;
        }
        const std::string not_known = "whether it was done is not known: ";
        say(false,
            words_of(orders[i], olt) + ": " + (result.done == Done::unknown ? not_known : "not done: ") + result.text);
        committed.failed = i + 1;
        break;
    }
    reach({});
    return committed;
}

} // namespace front::snmp
