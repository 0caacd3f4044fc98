// Answers about who asks: logging in and out.
#include "collector/clock.h"
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

HttpResponse session_of(const Context &context, const Identity &identity)
{
    Json json;
    json->StartObject();
    json.member("user", identity.user);
    json.member("role", identity.role ? std::optional(catalogue::to_text(*identity.role)) : std::nullopt);
    json.member_or_null("token", identity.token);
    json.member("login", context.services.gate->has_users());
    json.member("time", unix_time_now());
    json.member("version", context.services.version);
    json->EndObject();
    return json_response(json.text());
}

} // namespace

HttpResponse answer_session(const Context &context)
{
    return session_of(context, context.identity);
}

HttpResponse answer_log_in(const Context &context)
{
    if (!context.services.gate->has_users())
        throw Refusal(409, "conflict", "there are no users: whoever connects may read, and nobody may change anything");
    const RequestBody body(context, {"user", "password"});
    const std::string user = body.needed_text("user"), password = body.needed_text("password");
    audit::Client client = client_of(context);
    client.user = is_user_name(user) ? user : "";
    WriteLog &log = *context.services.log;
    try {
        context.services.gate->begin_attempt(context.request, user);
        const LogIn done = context.services.gate->log_in(context.request, user, password);
        log.note(client, "log in", "success");
        HttpResponse response = session_of(context, done.identity);
        response.headers.emplace_back("Set-Cookie", done.cookie);
        return response;
    } catch (const Refusal &refusal) {
        log.note_refused(client, "log in", refusal.what());
        throw;
    }
}

HttpResponse answer_log_out(const Context &context)
{
    HttpResponse response{.status = 204, .type = {}};
    response.headers.emplace_back("Set-Cookie", context.services.gate->log_out(context.request));
    if (context.identity.user) context.services.log->note(client_of(context), "log out", "success");
    return response;
}

} // namespace front
