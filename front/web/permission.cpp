#include "web/permission.h"

#include "call/target.h"
#include "collector/clock.h"
#include "http/refusal.h"
#include "text/hex.h"
#include "web/confirmation.h"
#include "web/write_log.h"

namespace front
{
namespace
{

// Returns the object that says what a request would do. Without a promise "confirm" is null.
std::string document_of(const call::PermissionRequest &request, const call::Target &target, const Hits &hits,
                        const std::string &confirm)
{
    Json json;
    json->StartObject();
    json.member_or_null("confirm", confirm);
    json.member("expires", confirm.empty() ? std::nullopt : std::optional(unix_time_now() + Confirmations::good_for));
    json.member("operation", request.operation ? request.operation->name : "");
    json.member("command", request.command ? std::optional(request.command->name) : std::nullopt);
    json.member("class", catalogue::to_text(request.impact));
    json.member("target", target.text.empty() ? std::string_view("the OLT") : std::string_view(target.text));
    write(json, hits);
    json->EndObject();
    return json.text();
}

} // namespace

call::Verdict WebPermission::decide(const call::PermissionRequest &request)
{
    if (!context.identity.may(request.impact)) {
        const std::string needed(catalogue::to_text(request.impact));
        context.services.log->note_refused(client_of(context), request.doing, "the role does not allow it");
        throw Refusal(403, "forbidden", request.doing + ": needs the role " + needed);
    }
    const call::Target target = call::target_of(request);
    if (dry_run) {
        tried = document_of(request, target, hits_of(context.state(), target), {});
        return call::Verdict::keep_back;
    }
    if (request.impact == catalogue::Class::service_affecting) {
        const Hits hits = hits_of(context.state(), target);
        const std::string what = context.identity.user.value_or("") + "\n" + context.state().name + "\n" +
                                 request.doing + "\n" + text::to_hex(request.exchange.request) + "\n" + hits.names();
        Confirmations &confirmations = context.services.confirmations;
        if (!confirmations.redeem(confirmation, what, steady_time_now()))
            throw ConfirmationNeeded(
                request.doing + " affects service of " + std::to_string(hits.onus.size()) +
                    (hits.onus.size() == 1 ? " ONU" : " ONUs") + ", of which " + std::to_string(hits.online) +
                    (hits.online == 1 ? " is" : " are") + " online; send it again with \"confirm\" to do it",
                document_of(request, target, hits, confirmations.promise(what, steady_time_now())));
    }
    if (request.impact != catalogue::Class::read) wanted = audit::wanted_by(request);
    return call::Verdict::send;
}

void WebPermission::note(const std::string &result)
{
    if (wanted) context.services.log->note(client_of(context), *wanted, result);
    wanted.reset();
}

HttpResponse response_of(const ConfirmationNeeded &needed)
{
    Json json;
    json->StartObject();
    json.key("error");
    json->StartObject();
    json.member("code", std::string_view("confirmation_needed"));
    json.member("message", std::string_view(needed.what()));
    json->EndObject();
    json.key("confirmation");
    json.raw(needed.document);
    json->EndObject();
    HttpResponse response = json_response(json.text());
    response.status = 428;
    return response;
}

audit::Client client_of(const Context &context)
{
    return {context.identity.user.value_or(""), context.request.peer, context.olt.state ? context.state().name : ""};
}

} // namespace front
