// Answers about what happened, and what happens.
#include <algorithm>

#include "http/refusal.h"
#include "rest/answers.h"
#include "text/words.h"
#include "web/event_hub.h"
#include "web/event_json.h"

namespace front
{
namespace
{

constexpr uint64_t most_events = 1000, usual_events = 100;

EventQuery query_of(const Context &context)
{
    EventQuery query{.olt = context.query("olt")};
    if (const auto port = context.number("port", UINT32_MAX)) query.port = static_cast<uint32_t>(*port);
    if (const auto id = context.number("onu_id", UINT32_MAX)) query.onu_id = static_cast<uint32_t>(*id);
    if (const std::string mac = context.query("mac"); !mac.empty()) {
        const std::optional<text::Mac> address = text::to_mac(mac);
        if (!address) bad_request("mac: expected an address as 00:1a:ff:33:44:55");
        query.mac = text::mac_text(*address);
    }
    if (const auto from = context.number("from", INT64_MAX)) query.from = static_cast<UnixTime>(*from);
    if (const auto to = context.number("to", INT64_MAX)) query.to = static_cast<UnixTime>(*to);
    query.before = context.number("before", INT64_MAX);
    query.after = context.number("after", INT64_MAX);
    if (const std::string kinds = context.query("kind"); !kinds.empty()) {
        for (const std::string &word : text::split(kinds, ',')) {
            const std::optional<EventKind> kind = event_kind(word);
            if (!kind) bad_request("kind: '" + word + "' is no kind of events");
            query.kinds.push_back(*kind);
        }
    }
    return query;
}

} // namespace

HttpResponse answer_events(const Context &context)
{
    const uint64_t limit =
        std::clamp<uint64_t>(context.number("limit", most_events).value_or(usual_events), 1, most_events);
    const EventQuery query = query_of(context);
    const std::shared_ptr<History> history = context.services.known.events();
    std::vector<Event> events = history->find(query, limit + 1);
    const bool more = events.size() > limit;
    if (more) events.pop_back();
    Json json;
    json->StartObject();
    json.key("events");
    write_events(json, events);
    json.member("more", more);
    json.member("last", history->bounds().second);
    json->EndObject();
    return json_response(json.text());
}

HttpAnswer answer_stream(const Context &context)
{
    Context asked = context;
    if (const std::string &header = context.request.header("last-event-id"); !header.empty())
        asked.request.query["last_event_id"] = header;
    const auto may_listen = [gate = context.services.gate, request = context.request] {
        return gate->identity_of(request).may(Role::read);
    };
    auto source =
        context.services.hub.listen(context.services.known, asked.number("last_event_id", INT64_MAX), may_listen);
    if (!source) {
        Refusal refusal(429, "too_many", "too many streams are open; try again in a moment");
        refusal.headers.emplace_back("Retry-After", "10");
        throw refusal;
    }
    return Stream{std::move(source)};
}

} // namespace front
