#include "daemon/front.h"

#include <algorithm>

#include "daemon/log.h"
#include "metrics/metrics.h"

namespace front
{
namespace
{

// An exchange ends after five seconds at the latest, and a table has as many exchanges as an OLT has ports.
constexpr Steady longest_turn = 30 * 60 * 1000;

} // namespace

Front::Front(Configuration wanted) : configuration(std::move(wanted))
{
    history = std::make_unique<History>(configuration.history, configuration.most_events);
    collect(configuration);
    http = listen(configuration.http);
}

Front::~Front()
{
    http.reset();
}

std::unique_ptr<HttpServer> Front::listen(const std::optional<ListenSettings> &where)
{
    if (!where) return nullptr;
    auto server = std::make_unique<HttpServer>(where->address, where->port,
                                               [this](const HttpRequest &request) { return answer(request); });
    log_line(LogLevel::info, "listening on " + where->address + " port " + std::to_string(server->port()));
    return server;
}

void Front::listen_elsewhere(const std::optional<ListenSettings> &where)
{
    http.reset(); // the new place may be a part of the old one
    try {
        http = listen(where);
    } catch (const std::runtime_error &) {
        http = listen(configuration.http);
        throw;
    }
}

void Front::replace_olts(Olts others)
{
    const std::lock_guard lock(guard);
    olts.swap(others);
}

void Front::collect(const Configuration &wanted)
{
    Olts all;
    for (const OltSettings &olt : wanted.olts) {
        const auto found = std::ranges::find(olts, olt, &Olt::settings);
        all.push_back(found != olts.end() ? *found : std::make_shared<Olt>(olt, wanted, *history));
    }
    replace_olts(std::move(all));
}

void Front::change(Configuration wanted)
{
    // What may fail comes first.
    std::unique_ptr<History> other_history;
    if (wanted.history != configuration.history)
        other_history = std::make_unique<History>(wanted.history, wanted.most_events);
    if (wanted.http != configuration.http) listen_elsewhere(wanted.http);

    if (!wanted.collects_as(configuration)) replace_olts({});
    if (other_history) history = std::move(other_history);
    history->keep_at_most(wanted.most_events);
    collect(wanted);
    const std::lock_guard lock(guard);
    configuration = std::move(wanted);
}

bool Front::is_alive() const
{
    const Steady now = time_now().steady;
    const std::lock_guard lock(guard);
    return std::ranges::all_of(olts, [now](const auto &olt) { return now - olt->last_turn() < longest_turn; });
}

std::vector<OltSnapshot> Front::snapshots() const
{
    const std::lock_guard lock(guard);
    std::vector<OltSnapshot> found;
    for (const auto &olt : olts)
        found.push_back({olt->settings().name, olt->snapshot()});
    return found;
}

OnuDetail Front::onu_detail_now() const
{
    const std::lock_guard lock(guard);
    return configuration.onus;
}

HttpResponse Front::answer(const HttpRequest &request) const
{
    if (request.path == "/metrics") {
        const Format format = accepted_format(request.accept);
        return {.type = std::string(media_type(format)),
                .body = metrics_text(snapshots(), onu_detail_now(), format, time_now().unix_time)};
    }
    if (request.path == "/") return {.body = "ponfront\n\n/metrics  numbers for monitoring systems\n"};
    return {.status = 404, .body = request.path + ": there is no such page; / lists them\n"};
}

} // namespace front
