#include "daemon/front.h"

#include <algorithm>

#include "metrics/metrics.h"
#include "program_log/log.h"
#include "web/roll_back.h"
#include "web/write_log.h"

namespace front
{

using program_log::log_line;
using program_log::LogLevel;
namespace
{

// An exchange ends after five seconds at the latest, and a table has as many exchanges as an OLT has ports.
constexpr Steady longest_turn = 30 * 60 * 1000;

std::shared_ptr<WriteLog> log_of(const Configuration &configuration)
{
    return std::make_shared<WriteLog>(configuration.audit,
                                      [](const std::string &line) { log_line(LogLevel::info, line); });
}

} // namespace

Front::Front(Configuration wanted, std::string program_version, std::span<const PageFile> page)
    : version(std::move(program_version)),
      page_files(page),
      configuration(std::move(wanted)),
      history(std::make_shared<History>(configuration.history, configuration.history_limits)),
      write_log(log_of(configuration)),
      pending([this](const std::string &olt) { roll_back(olt); })
{
    open_snmp(configuration);
    collect(configuration);
    http = listen(configuration.http, write_log);
}

Front::~Front()
{
    stop_listening();
    replace_olts({}); // their threads use what follows
}

void Front::stop_listening()
{
    hub.wakes({});
    http.reset();
}

std::unique_ptr<WebDoor> Front::listen(const std::optional<ListenSettings> &where, const std::shared_ptr<WriteLog> &log)
{
    if (!where) return nullptr;
    auto door = std::make_unique<WebDoor>(
        *where,
        Services{.known = *this,
                 .gate = nullptr,
                 .hub = hub,
                 .log = log,
                 .confirmations = confirmations,
                 .pending = pending,
                 .pages = pages,
                 .version = version},
        [this](const HttpRequest &request) { return metrics(request); }, page_files);
    hub.wakes([server = &door->server] { server->wake_streams(); });
    log_line(LogLevel::info, "listening on " + where->address + " port " + std::to_string(door->server.port()));
    return door;
}

void Front::listen_elsewhere(const std::optional<ListenSettings> &where, const std::shared_ptr<WriteLog> &log)
{
    stop_listening(); // the new place may be a part of the old one
    try {
        http = listen(where, log);
    } catch (const std::runtime_error &) {
        http = listen(configuration.http, write_log);
        throw;
    }
}

void Front::open_snmp(const Configuration &wanted)
{
    std::shared_ptr<SnmpDoor> made = wanted.snmp ? std::make_shared<SnmpDoor>(wanted, write_log) : nullptr;
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
    open_snmp(wanted);
}

void Front::looked(const Olt &olt, const OltState &before, const OltState &now, const std::vector<Event> &events)
{
    hub.tell(before, now);
    hub.tell(events);
    tell_snmp(olt.settings().index, events);
}

void Front::tell_snmp(uint32_t olt_index, const std::vector<Event> &events)
{
    std::shared_ptr<SnmpDoor> door;
    {
        const std::lock_guard lock(guard);
        door = snmp;
    }
    if (door) door->look([this] { return sources(); }, olt_index, events);
}

std::vector<snmp::Source> Front::sources() const
{
    std::vector<snmp::Source> found;
    {
        const std::lock_guard lock(guard);
        for (const auto &olt : collected) {
            const std::shared_ptr<const OltState> state = olt->door().state;
            found.push_back({.index = olt->settings().index,
                             .name = olt->settings().name,
                             .snapshot = state->snapshot,
                             .facts = state->facts});
        }
    }
    std::ranges::sort(found, {}, &snmp::Source::index);
    return found;
}

// By now nobody can confirm what the configuration of this OLT was.
void Front::roll_back(const std::string &olt)
{
    const std::optional<std::string> before = pending.take(olt);
    if (!before) return;
    const std::vector<OltDoor> doors = olts();
    const auto door = std::ranges::find(doors, olt, [](const OltDoor &one) { return one.state->name; });
    std::string result = "the OLT is collected no more";
    if (door != doors.end()) {
        reach(door->reach);
        result = load_configuration(*before);
    }
    pending.end(olt, result.empty());
    log_line(result.empty() ? LogLevel::warning : LogLevel::error,
             olt + ": the configuration was not confirmed; " +
                 (result.empty() ? "the one before was loaded" : "the one before cannot be loaded: " + result));
    const std::shared_ptr<WriteLog> log = [this] {
        const std::lock_guard lock(guard);
        return write_log;
    }();
    log->note({.user = {}, .address = {}, .olt = olt}, "roll the configuration back, as nobody confirmed it",
              result.empty() ? "success" : result);
}

void Front::replace_olts(Olts others)
{
    const std::lock_guard lock(guard);
    collected.swap(others);
}

void Front::collect(const Configuration &wanted)
{
    Olts all;
    for (const OltSettings &olt : wanted.olts) {
        const auto found = std::ranges::find(collected, olt, &Olt::settings);
        all.push_back(found != collected.end()
                          ? *found
                          : std::make_shared<Olt>(olt, wanted, *history,
                                                  [this](const Olt &of, const auto &before, const auto &now,
                                                         const auto &events) { looked(of, before, now, events); }));
    }
    replace_olts(std::move(all));
}

void Front::change(Configuration wanted)
{
    // What may fail comes first.
    std::shared_ptr<History> other_history;
    if (wanted.history != configuration.history)
        other_history = std::make_shared<History>(wanted.history, wanted.history_limits);
    const bool is_other_log = wanted.audit != configuration.audit;
    std::shared_ptr<WriteLog> log = is_other_log ? log_of(wanted) : write_log;
    if (is_other_log || wanted.http != configuration.http) listen_elsewhere(wanted.http, log);
    {
        const std::lock_guard lock(guard);
        write_log.swap(log);
    }
    const bool other_snmp = snmp ? !snmp->is_as(wanted) : wanted.snmp.has_value();
    if (is_other_log || other_snmp) open_other_snmp(wanted);

    if (!wanted.collects_as(configuration)) replace_olts({});
    if (other_history) {
        const std::lock_guard lock(guard);
        history.swap(other_history);
    }
    history->keep_at_most(wanted.history_limits);
    collect(wanted);
    {
        const std::lock_guard lock(guard);
        configuration = std::move(wanted);
    }
    tell_snmp({}, {}); // nothing happened, but there may be other OLTs
}

bool Front::is_alive() const
{
    const Steady now = time_now().steady;
    const std::lock_guard lock(guard);
    return std::ranges::all_of(collected, [now](const auto &olt) { return now - olt->last_turn() < longest_turn; });
}

std::vector<OltDoor> Front::olts() const
{
    const std::lock_guard lock(guard);
    std::vector<OltDoor> doors;
    for (const auto &olt : collected) {
        doors.push_back(olt->door());
        const auto plant = configuration.plants.find(olt->settings().name);
        if (plant != configuration.plants.end()) doors.back().plant = plant->second;
    }
    return doors;
}

std::shared_ptr<History> Front::events() const
{
    const std::lock_guard lock(guard);
    return history;
}

// Whoever asks within the same second, while nothing was read, gets the same text.
HttpResponse Front::metrics(const HttpRequest &request)
{
    std::vector<OltSnapshot> snapshots;
    OnuDetail detail{};
    {
        const std::lock_guard lock(guard);
        detail = configuration.onus;
        for (const auto &olt : collected)
            snapshots.push_back({olt->settings().name, olt->snapshot()});
    }
    const Format format = accepted_format(request.header("accept"));
    const UnixTime now = time_now().unix_time;
    std::string known = std::to_string(now / 1000) + "." + std::to_string(static_cast<int>(detail));
    for (const OltSnapshot &of : snapshots) {
        known += " " + of.name;
        for (const TableState &table : of.snapshot->states)
            known += "." + std::to_string(table.generation + table.failures);
    }
    const std::string type(media_type(format));
    const auto make = [&] { return metrics_text(snapshots, detail, format, now); };
    HttpResponse response = pages.page(request.path + "\n" + type, known, make)->response_to(request);
    response.type = type;
    return response;
}

} // namespace front
