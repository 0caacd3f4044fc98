#include "daemon/front.h"

#include <algorithm>

#include "board/service.h"
#include "daemon/log.h"
#include "metrics/metrics.h"
#include "web/roll_back.h"
#include "web/write_log.h"

namespace front
{
namespace
{

// An exchange ends after five seconds at the latest, and a table has as many exchanges as an OLT has ports.
constexpr Steady longest_turn = 30 * 60 * 1000;

} // namespace

Front::Front(Configuration wanted, std::string program_version, std::span<const PageFile> page)
    : version(std::move(program_version)),
      page_files(page),
      configuration(std::move(wanted)),
      history(std::make_shared<History>(configuration.history, configuration.most_events)),
      pending([this](const std::string &olt) { roll_back(olt); })
{
    collect(configuration);
    http = listen(configuration.http);
}

Front::~Front()
{
    stop_listening();
}

void Front::stop_listening()
{
    hub.wakes({});
    http.reset();
    const std::lock_guard lock(guard);
    write_log.reset();
}

std::unique_ptr<WebDoor> Front::listen(const std::optional<ListenSettings> &where)
{
    if (!where) return nullptr;
    auto log =
        std::make_shared<WriteLog>(where->audit, [](const std::string &line) { log_line(LogLevel::info, line); });
    {
        const std::lock_guard lock(guard);
        write_log = log;
    }
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

void Front::listen_elsewhere(const std::optional<ListenSettings> &where)
{
    stop_listening(); // the new place may be a part of the old one
    try {
        http = listen(where);
    } catch (const std::runtime_error &) {
        http = listen(configuration.http);
        throw;
    }
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
        board_ipc_use_thread_directory(door->socket_dir.empty() ? nullptr : door->socket_dir.c_str());
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
    if (log)
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
        all.push_back(found != collected.end() ? *found : std::make_shared<Olt>(olt, wanted, *history, hub));
    }
    replace_olts(std::move(all));
}

void Front::change(Configuration wanted)
{
    // What may fail comes first.
    std::shared_ptr<History> other_history;
    if (wanted.history != configuration.history)
        other_history = std::make_shared<History>(wanted.history, wanted.most_events);
    if (wanted.http != configuration.http) listen_elsewhere(wanted.http);

    if (!wanted.collects_as(configuration)) replace_olts({});
    if (other_history) {
        const std::lock_guard lock(guard);
        history.swap(other_history);
    }
    history->keep_at_most(wanted.most_events);
    collect(wanted);
    const std::lock_guard lock(guard);
    configuration = std::move(wanted);
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
    for (const auto &olt : collected)
        doors.push_back(olt->door());
    return doors;
}

std::shared_ptr<History> Front::events() const
{
    const std::lock_guard lock(guard);
    return history;
}

HttpResponse Front::metrics(const HttpRequest &request) const
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
    return {.type = std::string(media_type(format)),
            .body = metrics_text(snapshots, detail, format, time_now().unix_time)};
}

} // namespace front
