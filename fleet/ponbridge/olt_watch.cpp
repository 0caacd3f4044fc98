#include "fleet/ponbridge/olt_watch.h"

#include <algorithm>
#include <functional>

#include "board/service.h"
#include "call/exchange.h"
#include "call/json.h"
#include "call/permission.h"
#include "front/collector/clock.h"
#include "front/collector/read_table.h"

namespace fleet
{
namespace
{

using front::Steady;
using front::Table;

// Tables from which no events follow are read once a day.
constexpr uint32_t longest_period = 24 * 3600;

front::Collector::Periods periods(uint32_t seconds)
{
    constexpr Table watched[] = {Table::onus,     Table::alarms, Table::loops,
                                 Table::upgrades, Table::optics, Table::modules};
    front::Collector::Periods periods;
    for (const front::TableKind &kind : front::table_kinds())
        periods[static_cast<size_t>(kind.table)] =
            std::ranges::count(watched, kind.table) > 0 ? std::min(kind.period, seconds) : longest_period;
    return periods;
}

front::Now time_now()
{
    return {.steady = front::steady_time_now(), .unix_time = front::unix_time_now()};
}

} // namespace

OltWatch::OltWatch(const std::string &name, std::string socket_dir, uint32_t seconds, Tell tells)
    : olt(name),
      folder(std::move(socket_dir)),
      tell(std::move(tells)),
      collector(periods(seconds), std::hash<std::string>()(name), time_now),
      watcher(name, front::Limits{}),
      thread(&OltWatch::run, this)
{
}

OltWatch::~OltWatch()
{
    {
        const std::lock_guard lock(guard);
        stopping = true;
    }
    stopped.notify_all();
    thread.join();
}

void OltWatch::look()
{
    for (const front::Event &event : watcher.look(*collector.snapshot(), front::unix_time_now()).events)
        tell(olt, to_json(event));
}

void OltWatch::run()
{
    call::UpTo reading(catalogue::Class::read);
    const call::Sender collecting{"reading tables", nullptr};
    const call::Watch watch(collecting, reading);
    if (!folder.empty()) board_ipc_use_thread_directory(folder.c_str());
    std::unique_lock lock(guard);
    while (!stopping) {
        lock.unlock();
        const Steady due = collector.read_due([this] { look(); });
        look();
        const Steady now = front::steady_time_now();
        lock.lock();
        const std::chrono::milliseconds pause(std::clamp<Steady>(due - now, 0, 60'000));
        stopped.wait_for(lock, pause, [this] { return stopping; });
    }
}

std::string to_json(const front::Event &event)
{
    call::JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    json.key("at");
    json->Int64(event.at);
    json.member("olt", event.olt);
    json.member("kind", front::name_of(event.kind));
    json.member("port", event.port);
    json.member("count", event.count);
    if (event.onu_id)
        json.member("onu_id", *event.onu_id);
    else
        json.null("onu_id");
    for (const auto &[name, text] : {std::pair{"mac", &event.mac},
                                     {"onus", &event.onus},
                                     {"detail", &event.detail},
                                     {"cause", &event.cause},
                                     {"place", &event.place}})
        json.member(name, *text);
    json.key("measure");
    if (event.measure)
        json->Double(*event.measure);
    else
        json->Null();
    json.member("text", front::sentence_of(event));
    json->EndObject();
    return json.written();
}

} // namespace fleet
