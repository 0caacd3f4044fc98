// Answers about the configuration of an OLT: shown, compared, applied, and taken back.
#include "board/ipc.h"
#include "collector/clock.h"
#include "configuration/olt.h"
#include "http/refusal.h"
#include "rest/answers.h"
#include "web/confirmation.h"
#include "web/json.h"
#include "web/pending.h"
#include "web/permission.h"
#include "web/request_body.h"
#include "web/roll_back.h"
#include "web/write_log.h"

namespace front
{
namespace
{

constexpr uint32_t shortest_wait = 10, longest_wait = 3600; // seconds

// Refuses when an exchange was not good.
void expect_good(const Context &context, const call::Invocation &called)
{
    if (called.good()) return;
    const std::string olt = context.state().name + ": ";
    if (!called.answered()) throw Refusal(502, "no_answer", olt + ipc_strerror(called.exchange().result));
    if (!called.fault().empty()) throw Refusal(502, "no_answer", olt + called.fault());
    const uint32_t word = called.status() != 0 ? called.status() : called.exchange().status;
    const catalogue::Status *const status = catalogue::find_status(word);
    throw Refusal(502, "refused", olt + (status ? std::string(status->brief) : "status " + std::to_string(word)));
}

std::string own_text(const Context &context)
{
    call::UpTo permission(catalogue::Class::write); // the OLT writes a file, and it has passwords
    const call::Invocation called = config::read_from_olt(permission);
    expect_good(context, called);
    return std::string(config::text_in(called));
}

std::string shown(const config::ConfigSetting &setting, const std::string &value)
{
    return setting.is_secret && !value.empty() ? "***" : value;
}

// A Plan is what an OLT gets when a configuration is applied to it.
struct Plan {
    std::string before, text;
    std::vector<config::ConfigDifference> differences;
    std::vector<std::string> left_out;
};

Plan plan_of(const Context &context, const std::string &text)
{
    Plan plan;
    plan.before = own_text(context);
    try {
        const config::Configuration own("the OLT", plan.before), wanted("text", text);
        call::UpTo reading(catalogue::Class::read);
        config::Fitted fits = config::fitted_to_olt(own, wanted, reading);
        plan.text = config::text_of(own.first_line, fits.rows);
        plan.differences = config::differences(own, config::Configuration("text", plan.text));
        plan.left_out = std::move(fits.left_out);
    } catch (const call::UsageError &error) {
        bad_request(error.what());
    }
    return plan;
}

void write_setting(Json &json, const config::ConfigSetting &setting)
{
    json.member("table", setting.table);
    json.member("key", setting.key);
    json.member("name", setting.name);
}

void write(Json &json, const Plan &plan)
{
    json.key("differences");
    json->StartArray();
    for (const config::ConfigDifference &difference : plan.differences) {
        json->StartObject();
        write_setting(json, difference.setting);
        json.member_or_null("before", shown(difference.setting, difference.before));
        json.member_or_null("after", shown(difference.setting, difference.after));
        json->EndObject();
    }
    json->EndArray();
    json.key("left_out");
    json->StartArray();
    for (const std::string &what : plan.left_out)
        json.put(what);
    json->EndArray();
}

// Loading replaces what the OLT keeps: all of its ONUs are named.
void expect_confirmed(const Context &context, const Plan &plan, const std::string &confirm)
{
    const Hits hits = all_of(context.state());
    std::string what =
        context.identity.user.value_or("") + "\nconfiguration of " + context.state().name + "\n" + hits.names() + "\n";
    for (const config::ConfigDifference &difference : plan.differences)
        what += difference.setting.line(difference.before + " " + difference.after) + "\n";
    Confirmations &confirmations = context.services.confirmations;
    if (confirmations.redeem(confirm, what, steady_time_now())) return;
    Json json;
    json->StartObject();
    json.member("confirm", confirmations.promise(what, steady_time_now()));
    json.member("expires", unix_time_now() + Confirmations::good_for);
    json.member("operation", std::string_view("apply"));
    json.member("class", catalogue::to_text(Role::service_affecting));
    json.member("target", std::string_view("the OLT"));
    write(json, hits);
    write(json, plan);
    json->EndObject();
    throw ConfirmationNeeded("applying the configuration changes " + std::to_string(plan.differences.size()) +
                                 " settings and may affect service; send it again with \"confirm\" to do it",
                             json.text());
}

HttpResponse nothing_waits(const Context &context)
{
    throw Refusal(409, "conflict", context.state().name + ": no configuration waits to be confirmed");
}

} // namespace

HttpResponse answer_settings(const Context &context)
{
    const config::Configuration own("the OLT", own_text(context));
    Json json;
    json->StartObject();
    json.key("settings");
    json->StartArray();
    for (const auto &[place, setting] : config::settings_of(own)) {
        json->StartObject();
        write_setting(json, setting);
        json.member("value", shown(setting, setting.value));
        json->EndObject();
    }
    json->EndArray();
    json->EndObject();
    return json_response(json.text());
}

HttpResponse answer_configuration_text(const Context &context)
{
    HttpResponse response{.body = own_text(context)};
    response.headers = {{"Cache-Control", "no-store"},
                        {"Content-Disposition", "attachment; filename=\"" + context.state().name + ".cfg\""}};
    context.services.log->note(client_of(context), "save the configuration", "success");
    return response;
}

HttpResponse answer_compare(const Context &context)
{
    const RequestBody body(context, {"text"});
    const Plan plan = plan_of(context, body.needed_text("text"));
    Json json;
    json->StartObject();
    write(json, plan);
    json->EndObject();
    return json_response(json.text());
}

HttpResponse answer_apply(const Context &context)
{
    const RequestBody body(context, {"text", "seconds", "confirm"});
    const uint32_t seconds = body.number("seconds").value_or(0);
    if (seconds != 0 && (seconds < shortest_wait || seconds > longest_wait))
        bad_request("seconds: expected 0, or from " + std::to_string(shortest_wait) + " to " +
                    std::to_string(longest_wait));
    const std::string &olt = context.state().name;
    PendingConfigurations &pending = context.services.pending;
    const Plan plan = plan_of(context, body.needed_text("text"));
    expect_confirmed(context, plan, body.text("confirm").value_or(""));

    using State = PendingConfigurations::State;
    const int64_t rolls_back = unix_time_now() + 1000 * int64_t{seconds};
    const PendingConfigurations::Pending waits{.ends = steady_time_now() + 1000 * int64_t{seconds},
                                               .rolls_back = rolls_back,
                                               .user = context.identity.user.value_or(""),
                                               .before = plan.before};
    if (seconds > 0 ? !pending.keep(olt, waits) : pending.of(olt).state == State::waiting)
        throw Refusal(409, "conflict", olt + ": another configuration waits to be confirmed");
    const std::string result = load_configuration(plan.text);
    context.services.log->note(client_of(context),
                               "apply a configuration, " + std::to_string(plan.differences.size()) + " settings",
                               result.empty() ? "success" : result);
    if (!result.empty()) {
        if (seconds > 0) pending.confirm(olt); // nothing was changed, so there is nothing to go back to
        throw Refusal(502, "refused", olt + ": " + result);
    }
    Json json;
    json->StartObject();
    json.member("applied", true);
    json.member("changed", plan.differences.size());
    write(json, plan);
    json.member("rolls_back", seconds > 0 ? std::optional(rolls_back) : std::nullopt);
    json->EndObject();
    return json_response(json.text());
}

HttpResponse answer_pending(const Context &context)
{
    const PendingConfigurations::Pending pending = context.services.pending.of(context.state().name);
    const bool waits = pending.state == PendingConfigurations::State::waiting;
    Json json;
    json->StartObject();
    json.member("state", name_of(pending.state));
    json.member("rolls_back", waits ? std::optional(pending.rolls_back) : std::nullopt);
    json.member_or_null("user", pending.user);
    json->EndObject();
    return json_response(json.text());
}

HttpResponse answer_confirm(const Context &context)
{
    if (!context.services.pending.confirm(context.state().name)) return nothing_waits(context);
    context.services.log->note(client_of(context), "confirm the configuration", "success");
    return {.status = 204, .type = {}};
}

HttpResponse answer_rollback(const Context &context)
{
    const std::optional<std::string> before = context.services.pending.take(context.state().name);
    if (!before) return nothing_waits(context);
    const std::string result = load_configuration(*before);
    context.services.pending.end(context.state().name, result.empty());
    context.services.log->note(client_of(context), "roll the configuration back", result.empty() ? "success" : result);
    if (!result.empty()) throw Refusal(502, "refused", context.state().name + ": " + result);
    return json_response("{\"rolled_back\":true}");
}

} // namespace front
