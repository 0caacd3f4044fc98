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
    open_snmp(configuration);
    collect(configuration);
    http = listen(configuration.http);
}

Front::~Front()
{
    http.reset();
    replace_olts({}); // their threads use the door of SNMP
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

void Front::open_snmp(const Configuration &wanted)
{
    std::shared_ptr<SnmpDoor> made = wanted.snmp ? std::make_shared<SnmpDoor>(wanted) : nullptr;
    const std::lock_guard lock(guard);
    snmp.swap(made);
}

void Front::open_other_snmp(const Configuration &wanted)
{
    // The master agent takes nothing that the one before has still registered.
    std::shared_ptr<SnmpDoor> before;
    {
        const std::lock_guard lock(guard);
        before.swap(snmp);
    }
    before.reset();
    try {
        open_snmp(wanted);
    } catch (const std::runtime_error &) {
        open_snmp(configuration);
        throw;
    }
}

void Front::looked(const OltSettings &olt, const std::vector<Event> &events)
{
    std::shared_ptr<SnmpDoor> door;
    {
        const std::lock_guard lock(guard);
        door = snmp;
    }
    if (door) door->look([this] { return sources(); }, olt.index, events);
}

std::vector<snmp::Source> Front::sources() const
{
    std::vector<snmp::Source> found;
    {
        const std::lock_guard lock(guard);
        for (const auto &olt : olts)
            found.push_back({.index = olt->settings().index,
                             .name = olt->settings().name,
                             .snapshot = olt->snapshot(),
                             .facts = olt->facts()});
    }
    std::ranges::sort(found, {}, &snmp::Source::index);
    return found;
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
        all.push_back(found != olts.end()
                          ? *found
                          : std::make_shared<Olt>(olt, wanted, *history,
                                                  [this](const auto &of, const auto &events) { looked(of, events); }));
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
    const bool other_snmp = snmp ? !snmp->is_as(wanted) : wanted.snmp.has_value();
    if (other_snmp) open_other_snmp(wanted);

    if (!wanted.collects_as(configuration)) replace_olts({});
    if (other_history) history = std::move(other_history);
    history->keep_at_most(wanted.most_events);
    collect(wanted);
    {
        const std::lock_guard lock(guard);
        configuration = std::move(wanted);
    }
    if (snmp) looked({}, {}); // nothing happened, but there may be other OLTs
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
