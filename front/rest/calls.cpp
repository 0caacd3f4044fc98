// Calls of operations by their names, and what is asked of an OLT by such calls.
#include <algorithm>

#include "call/arguments.h"
#include "call/call.h"
#include "http/refusal.h"
#include "rest/answers.h"
#include "web/json.h"
#include "web/permission.h"
#include "web/request_body.h"
#include "web/write_log.h"

namespace front
{
namespace
{

constexpr uint32_t longest_deadline = 60'000;

// Returns the call in the form that call::call_from_json() reads.
std::string call_text(const std::string &operation, const RequestBody &body)
{
    Json json;
    json->StartObject();
    json.member("operation", operation);
    for (const char *name : {"arguments", "allow_long"}) {
        const text::json::Value *const value = body.value(name);
        if (!value) continue;
        json.key(name);
        value->Accept(*json.operator->());
    }
    json->EndObject();
    return json.text();
}

call::Call call_of(const Context &context, const RequestBody &body)
{
    const std::string &operation = context.place("operation");
    if (!catalogue::find_operation(operation)) not_found("there is no operation '" + operation + "'");
    call::Call asked = call::call_from_json(call_text(operation, body));
    asked.deadline = body.number("deadline_ms");
    if (asked.deadline && (*asked.deadline == 0 || *asked.deadline > longest_deadline))
        bad_request("deadline_ms: expected a number from 1 to " + std::to_string(longest_deadline));
    return asked;
}

std::string result_of(const call::Outcome &outcome)
{
    if (outcome.ipc_result != 0) return outcome.ipc_text;
    return outcome.status_name.empty() ? std::to_string(outcome.status) : outcome.status_name;
}

// Returns the outcome with the member "confirmation" at its end.
std::string with_confirmation(std::string outcome, const std::string &confirmation)
{
    const size_t end = outcome.rfind('}');
    return outcome.insert(end, ",\"confirmation\":" + (confirmation.empty() ? "null" : confirmation));
}

// Returns the rows that an operation delivers, as JSON, or "null" when the OLT refuses them.
std::string rows_of_call(const Context &context, const char *operation, std::vector<call::Assignment> arguments)
{
    call::UpTo reading(catalogue::Class::read);
    call::Call asked;
    asked.operation = operation;
    asked.arguments = std::move(arguments);
    const call::Outcome outcome = call::perform(asked, reading);
    if (outcome.ipc_result != 0) throw Refusal(502, "no_answer", context.state().name + ": " + outcome.ipc_text);
    return outcome.status == 0 && outcome.outputs && !outcome.outputs->empty() ? outcome.outputs->front().value
                                                                               : "null";
}

void write_argument(Json &json, const catalogue::Operation &operation, const catalogue::Argument &argument)
{
    json->StartObject();
    json.member("name", argument.name);
    json.member("type", call::type_name(operation, argument));
    json.member("output", call::is_output(argument));
    json.member("required", !call::is_output(argument) && !call::may_be_omitted(argument));
    json.member("brief", argument.brief);
    json->EndObject();
}

} // namespace

HttpResponse answer_call(const Context &context)
{
    const RequestBody body(context, {"arguments", "allow_long", "deadline_ms", "confirm", "dry_run"});
    const bool dry_run = body.truth("dry_run");
    WebPermission permission(context, body.text("confirm").value_or(""), dry_run);
    try {
        const call::Call asked = call_of(context, body);
        const call::Outcome outcome = call::perform(asked, permission);
        permission.note(result_of(outcome));
        const std::string text = call::to_json(outcome);
        return json_response(dry_run ? with_confirmation(text, permission.would_do()) : text);
    } catch (const call::Error &error) {
        bad_request(error.what());
    }
}

HttpResponse answer_operations(const Context &context)
{
    return versioned(context, "", [] {
        Json json;
        json->StartObject();
        json.key("operations");
        json->StartArray();
        for (const catalogue::Operation &operation : catalogue::operations()) {
            json->StartObject();
            json.member("name", operation.name);
            json.member("family", operation.family);
            json.member("brief", operation.brief);
            json.member("class", catalogue::to_text(operation.impact));
            json.key("arguments");
            json->StartArray();
            for (const catalogue::Argument &argument : operation.arguments)
                if (!call::is_ignored(argument)) write_argument(json, operation, argument);
            json->EndArray();
            json->EndObject();
        }
        json->EndArray();
        json->EndObject();
        return json.text();
    });
}

HttpResponse answer_profiles(const Context &context)
{
    Json json;
    json->StartObject();
    const auto put = [&](const char *name, const std::string &rows) {
        json.key(name);
        json.raw(rows);
    };
    // What has no operation of its own is asked for by the command that delivers its table.
    for (const auto &[name, command] : {std::pair{"line", "BSP_CMD_PROFILE_LINE_TABLE"},
                                        {"sla", "BSP_CMD_PROFILE_SLA_TABLE"},
                                        {"alarm", "BSP_CMD_PROFILE_ALARM_TABLE"}})
        put(name, rows_of_call(context, "bsp_profile_exec_get_json", {{"action", command}}));
    put("uni", rows_of_call(context, "bsp_pon_prof_uni_get", {{"profile_id", "0"}}));
    put("upgrade", rows_of_call(context, "bsp_pon_get_onu_upgrade_type", {}));
    json->EndObject();
    return json_response(json.text());
}

} // namespace front
