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
    for (const OltSettings &olt : configuration.olts)
        olts.push_back(std::make_shared<Olt>(olt, configuration, *history));
    start_http();
}

Front::~Front()
{
    http.reset();
}

void Front::start_http()
{
    if (!configuration.http) return;
    const auto &[address, port] = *configuration.http;
    http = std::make_unique<HttpServer>(address, port, [this](const HttpRequest &request) { return answer(request); });
    log_line(LogLevel::info, "listening on " + address + " port " + std::to_string(http->port()));
}

void Front::change(Configuration wanted)
{
    const bool as_before = wanted.collects_as(configuration);
    const bool same_http = wanted.http == configuration.http;
    if (!same_http) http.reset();
    {
        const std::lock_guard lock(guard);
        std::vector<std::shared_ptr<Olt>> before;
        before.swap(olts);
        if (as_before) {
            for (const OltSettings &olt : wanted.olts)
                if (const auto found = std::ranges::find(before, olt, &Olt::settings); found != before.end())
                    olts.push_back(*found);
        }
        before.clear(); // those that are not collected on end here
        if (!as_before) {
            history.reset();
            history = std::make_unique<History>(wanted.history, wanted.most_events);
        }
        for (const OltSettings &olt : wanted.olts)
            if (std::ranges::find(olts, olt, &Olt::settings) == olts.end())
                olts.push_back(std::make_shared<Olt>(olt, wanted, *history));
        configuration = std::move(wanted);
    }
    if (!same_http) start_http();
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

HttpResponse Front::answer(const HttpRequest &request) const
{
    if (request.path == "/metrics") {
        const Format format = accepted_format(request.accept);
        return {.type = std::string(media_type(format)),
                .body = metrics_text(snapshots(), configuration.onus, format, time_now().unix_time)};
    }
    if (request.path == "/") return {.body = "ponfront\n\n/metrics  numbers for monitoring systems\n"};
    return {.status = 404, .body = request.path + ": there is no such page; / lists them\n"};
}

} // namespace front
