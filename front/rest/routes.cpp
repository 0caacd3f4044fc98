#include "rest/routes.h"

#include "rest/answers.h"
#include "text/words.h"

namespace front
{
namespace
{

constexpr std::string_view root = "/api/v1";
constexpr size_t longest_configuration = 16 << 20;

// Returns what stands in the varying parts of a path, or none when it is another path.
std::optional<std::map<std::string, std::string>> places_in(const std::string &pattern, const std::string &path)
{
    const std::vector<std::string> parts = text::split(pattern, '/'), words = text::split(path, '/');
    if (parts.size() != words.size()) return std::nullopt;
    std::map<std::string, std::string> places;
    for (size_t number = 0; number < parts.size(); ++number) {
        const std::string &part = parts[number], &word = words[number];
        if (part.starts_with('{') && !word.empty())
            places[part.substr(1, part.size() - 2)] = word;
        else if (part != word)
            return std::nullopt;
    }
    return places;
}

std::vector<Route> all_routes()
{
    const Parameter limit{"limit", "how many at most", true};
    const Parameter text{"text", "the text of a configuration"}, confirm{"confirm", "what the answer 428 named"};
    return {
        {"GET", "/session", {}, Maker::server, "Who asks, and what they may do", answer_session},
        {"POST",
         "/session",
         {},
         Maker::password,
         "Logs in",
         answer_log_in,
         {},
         {{"user", "the name"}, {"password", "the password"}},
         {401, 409, 429},
         4096},
        {"DELETE", "/session", {}, Maker::server, "Logs out", answer_log_out, {}, {}, {204}},
        {"GET", "/olts", Role::read, Maker::server, "All OLTs", answer_olts, {}, {}, {304}},
        {"GET", "/olts/{olt}", Role::read, Maker::server, "An OLT, its ports, and how old its tables are", answer_olt},
        {"GET",
         "/olts/{olt}/ports",
         Role::read,
         Maker::server,
         "The PON ports of an OLT",
         answer_ports,
         {},
         {},
         {304, 503}},
        {"GET", "/olts/{olt}/ports/{port}", Role::read, Maker::server, "A PON port", answer_port, {}, {}, {304, 503}},
        {"GET",
         "/olts/{olt}/ports/{port}/plant",
         Role::read,
         Maker::server,
         "The splitters of a PON port, the ONUs behind them, and who fell together",
         answer_plant,
         {},
         {},
         {304, 503}},
        {"GET",
         "/olts/{olt}/onus",
         Role::read,
         Maker::server,
         "The bound ONUs of an OLT, a row each",
         answer_onus,
         {{"port", "of this PON port only", true}},
         {},
         {304, 503}},
        {"GET",
         "/olts/{olt}/onus/{port}/{id}",
         Role::read,
         Maker::storage,
         "Everything known of an ONU",
         answer_onu,
         {},
         {},
         {503}},
        {"GET",
         "/olts/{olt}/waiting",
         Role::read,
         Maker::server,
         "The ONUs that wait to be bound",
         answer_waiting,
         {},
         {},
         {304, 503}},
        {"GET",
         "/olts/{olt}/alarms",
         Role::read,
         Maker::server,
         "The alarms of an OLT",
         answer_alarms,
         {},
         {},
         {304, 503}},
        {"GET",
         "/olts/{olt}/optics/{port}/{id}",
         Role::read,
         Maker::storage,
         "Light of an ONU over time",
         answer_light,
         {{"from", "milliseconds since 1970", true}, {"to", "milliseconds since 1970", true}},
         {},
         {503}},
        {"GET",
         "/search",
         Role::read,
         Maker::server,
         "ONUs by whatever is known of them",
         answer_search,
         {{"q", "a MAC address, LOID, name, description or serial number, or a part of it"}, limit}},
        {"GET",
         "/events",
         Role::read,
         Maker::storage,
         "What happened, the newest first",
         answer_events,
         {{"olt", "of this OLT only"},
          {"kind", "of these kinds, with commas between them"},
          {"port", "of this PON port", true},
          {"onu_id", "of the ONU with this id", true},
          {"mac", "of this ONU"},
          {"from", "milliseconds since 1970", true},
          {"to", "milliseconds since 1970", true},
          {"before", "older than the event with this number", true},
          {"after", "newer than the event with this number", true},
          limit}},
        {"GET",
         "/events/stream",
         Role::read,
         Maker::server,
         "What happens, as it happens",
         answer_stream,
         {{"last_event_id", "as the header Last-Event-ID", true}},
         {},
         {429},
         0,
         false},
        {"GET",
         "/operations",
         Role::read,
         Maker::server,
         "The operations of the catalogue",
         answer_operations,
         {},
         {},
         {304}},
        {"POST",
         "/olts/{olt}/calls/{operation}",
         Role::read,
         Maker::olt,
         "Calls an operation",
         answer_call,
         {},
         {},
         {403, 428, 429}},
        {"GET",
         "/olts/{olt}/profiles",
         Role::read,
         Maker::olt,
         "The profiles of an OLT, asked of it now",
         answer_profiles,
         {},
         {},
         {502}},
        {"GET",
         "/olts/{olt}/configuration",
         Role::write,
         Maker::olt,
         "What is configured",
         answer_settings,
         {},
         {},
         {502}},
        {"GET",
         "/olts/{olt}/configuration/text",
         Role::service_affecting,
         Maker::olt,
         "The configuration, with its passwords, to save it",
         answer_configuration_text,
         {},
         {},
         {502},
         0,
         false},
        {"POST",
         "/olts/{olt}/configuration/compare",
         Role::write,
         Maker::olt,
         "What another configuration would change",
         answer_compare,
         {},
         {text},
         {502},
         longest_configuration},
        {"POST",
         "/olts/{olt}/configuration/apply",
         Role::service_affecting,
         Maker::olt,
         "Applies another configuration",
         answer_apply,
         {},
         {text, {"seconds", "after which it goes back unless it is confirmed", true}, confirm},
         {409, 428, 502},
         longest_configuration},
        {"GET", "/olts/{olt}/configuration/pending", Role::read, Maker::server, "What waits to be confirmed",
         answer_pending},
        {"POST",
         "/olts/{olt}/configuration/confirm",
         Role::service_affecting,
         Maker::server,
         "Keeps what was applied",
         answer_confirm,
         {},
         {},
         {204, 409}},
        {"POST",
         "/olts/{olt}/configuration/rollback",
         Role::service_affecting,
         Maker::olt,
         "Goes back to the configuration before",
         answer_rollback,
         {},
         {},
         {409, 502}},
    };
}

} // namespace

std::span<const Route> routes()
{
    static const std::vector<Route> all = all_routes();
    return all;
}

std::optional<Way> find_way(const std::string &method, const std::string &path)
{
    if (!path.starts_with(root)) return std::nullopt;
    const std::string below = path.substr(root.size());
    std::optional<Way> way;
    for (const Route &route : routes()) {
        auto places = places_in(route.path, below);
        if (!places) continue;
        if (!way) way.emplace();
        way->allowed += (way->allowed.empty() ? "" : ", ") + std::string(route.method);
        if (method == route.method) {
            way->route = &route;
            way->places = std::move(*places);
        }
    }
    return way;
}

} // namespace front
