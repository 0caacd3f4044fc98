#include "rest/console.h"

#include <algorithm>

#include "call/codec/errors.h"
#include "http/encoding.h"
#include "http/refusal.h"
#include "rest/openapi.h"
#include "rest/routes.h"
#include "storage/statement.h"
#include "web/permission.h"

namespace front
{
namespace
{

constexpr std::string_view api = "/api/";
// As many log-ins are checked at once as there are threads: each needs 64 MiB.
constexpr size_t storage_threads = 2, password_threads = 1, most_waiting = 64, most_log_ins = 8;

Way way_of(const HttpRequest &request)
{
    std::optional<Way> way = find_way(request.method, request.path);
    if (!way) not_found(request.path + ": there is no such path; /openapi.json lists them");
    if (!way->route) {
        Refusal refusal(405, "method", request.path + ": is asked with " + way->allowed);
        refusal.headers.emplace_back("Allow", way->allowed);
        throw refusal;
    }
    return std::move(*way);
}

std::string_view word_of(unsigned status)
{
    switch (status) {
    case 413:
        return "too_large";
    case 429:
        return "too_many";
    case 503:
        return "not_yet";
    default:
        return "failure";
    }
}

// Files are kept compressed.
HttpResponse file_response(const HttpRequest &request, const PageFile &file)
{
    HttpResponse response{.type = std::string(file.type)};
    response.headers.emplace_back("Cache-Control", file.is_hashed ? "public, max-age=31536000, immutable" : "no-cache");
    response.headers.emplace_back("Vary", "Accept-Encoding");
    if (takes_gzip(request.header("accept-encoding"))) {
        response.body = file.packed;
        response.headers.emplace_back("Content-Encoding", "gzip");
    } else {
        response.body = gunzip(file.packed);
    }
    return response;
}

} // namespace

Console::Console(ConsoleSettings console_settings, Services made_with, Metrics answer_metrics,
                 std::span<const PageFile> page_files)
    : settings(console_settings),
      services(std::move(made_with)),
      metrics(std::move(answer_metrics)),
      files(page_files),
      storage(std::make_shared<Workers>(storage_threads, most_waiting)),
      passwords(std::make_shared<Workers>(password_threads, most_log_ins))
{
}

HttpResponse Console::with_rules(HttpResponse response) const
{
    for (auto &rule : browser_rules(settings.encrypted))
        response.headers.push_back(std::move(rule));
    return response;
}

HttpResponse Console::guarded(const std::function<HttpResponse()> &make) const
{
    try {
        return with_rules(make());
    } catch (const Refusal &refused) {
        return with_rules(response_of(refused));
    } catch (const ConfirmationNeeded &needed) {
        return with_rules(response_of(needed));
    } catch (const call::Error &error) {
        return with_rules(response_of(Refusal(502, "no_answer", error.what())));
    } catch (const storage::Error &error) {
        return with_rules(response_of(Refusal(500, "failure", std::string("the history: ") + error.what())));
    }
}

HttpResponse Console::refusal(unsigned status, const std::string &reason)
{
    return with_rules(response_of(Refusal(status, std::string(word_of(status)), reason)));
}

Context Console::context_of(const HttpRequest &request, const Route &route,
                            std::map<std::string, std::string> places) const
{
    services.gate->check_host(request);
    Context context{.services = services,
                    .request = request,
                    .identity = services.gate->identity_of(request),
                    .places = std::move(places),
                    .olt = {}};
    // What the path does not take makes no other answer of it.
    std::erase_if(context.request.query, [&route](const auto &given) {
        return std::ranges::find(route.query, given.first, &Parameter::name) == route.query.end();
    });
    if (route.role && !context.identity.role)
        throw Refusal(401, "login_needed", "log in first, or name a token in the header Authorization");
    if (route.maker == Maker::password)
        Gate::check_origin(request);
    else if (request.method != "GET")
        Gate::check_own(request, context.identity);
    if (route.role && !context.identity.may(*route.role))
        throw Refusal(403, "forbidden", "this needs the role " + std::string(catalogue::to_text(*route.role)));
    const auto olt = context.places.find("olt");
    if (olt == context.places.end()) return context;
    const std::vector<OltDoor> olts = services.known.olts();
    const auto found = std::ranges::find(olts, olt->second, [](const OltDoor &door) { return door.state->name; });
    if (found == olts.end()) not_found("there is no OLT '" + olt->second + "'");
    context.olt = *found;
    return context;
}

Admission Console::admit(const HttpRequest &head)
{
    Admission admission;
    if (!head.path.starts_with(api)) return admission;
    // Who may not ask is told so before a body is read.
    try {
        Way way = way_of(head);
        context_of(head, *way.route, std::move(way.places));
        const std::string &type = head.header("content-type");
        const bool has_body = !head.header("content-length").empty() || !head.header("transfer-encoding").empty();
        if (has_body && head.header("content-length") != "0" && !type.starts_with("application/json"))
            throw Refusal(415, "media_type", "expected a body of application/json");
        if (head.method != "GET") admission.longest_body = way.route->longest_body;
    } catch (const Refusal &refused) {
        admission.refusal = with_rules(response_of(refused));
    }
    return admission;
}

HttpAnswer Console::answer_route(const HttpRequest &request) const
{
    Way way = way_of(request);
    const Route &route = *way.route;
    const auto context = std::make_shared<Context>(context_of(request, route, std::move(way.places)));
    if (const auto *any = std::get_if<HttpAnswer (*)(const Context &)>(&route.answer)) return (*any)(*context);
    const auto make = [this, context, answer = std::get<HttpResponse (*)(const Context &)>(route.answer)] {
        return guarded([&] { return answer(*context); });
    };
    switch (route.maker) {
    case Maker::server:
        return make();
    case Maker::storage:
        return Deferred{storage, make};
    case Maker::password:
        return Deferred{passwords, make};
    case Maker::olt:
        break;
    }
    return Deferred{context->olt.workers, make};
}

HttpAnswer Console::answer_other(const HttpRequest &request) const
{
    if (request.method != "GET") {
        Refusal refusal(405, "method", request.path + ": is asked with GET, HEAD");
        refusal.headers.emplace_back("Allow", "GET, HEAD");
        throw refusal;
    }
    if (request.path == "/metrics") {
        if (settings.metrics_need_user && !services.gate->identity_of(request).may(Role::read))
            throw Refusal(401, "login_needed", "name a token in the header Authorization");
        return metrics(request);
    }
    services.gate->check_host(request);
    if (request.path == "/openapi.json")
        return versioned(services.pages, request, request.path, services.version, openapi_text);
    const auto file = std::ranges::find(files, request.path, &PageFile::path);
    if (file != files.end()) return with_rules(file_response(request, *file));
    if (request.path == "/" && files.empty())
        return with_rules({.body = "ponfront\n\n/metrics       numbers for monitoring systems\n"
                                   "/openapi.json  the interface below /api/v1\n"});
    not_found(request.path + ": there is no such page");
}

HttpAnswer Console::answer(const HttpRequest &request)
{
    HttpAnswer answer;
    const HttpResponse refused = guarded([&] {
        answer = request.path.starts_with(api) ? answer_route(request) : answer_other(request);
        return HttpResponse{.status = 0};
    });
    return refused.status == 0 ? std::move(answer) : HttpAnswer(refused);
}

} // namespace front
