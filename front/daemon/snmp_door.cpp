#include "daemon/snmp_door.h"

#include <algorithm>

#include "daemon/log.h"
#include "daemon/olt.h"

namespace front
{
namespace
{

constexpr uint64_t audit_limit = 16u << 20; // bytes of the file, and of the one before

void say(bool well, const std::string &text)
{
    log_line(well ? LogLevel::info : LogLevel::warning, text);
}

void complain(const std::string &text)
{
    log_line(LogLevel::error, text);
}

snmp::AgentSettings settings_of(const Configuration &configuration)
{
    const SnmpSettings &snmp = configuration.snmp.value();
    snmp::AgentSettings settings{
        .master = snmp.master, .mib = snmp.mib, .priority = snmp.priority, .sets = {.up_to = snmp.sets, .folders = {}}};
    for (const OltSettings &olt : configuration.olts)
        settings.sets.folders[olt.index] = olt.socket_dir;
    return settings;
}

std::unique_ptr<audit::BoundedLog> audit_log_of(const Configuration &configuration)
{
    if (!configuration.snmp->sets) return nullptr;
    return std::make_unique<audit::BoundedLog>(configuration.audit, audit_limit, complain, [](uint64_t lost) {
        return audit::line_of_lost(static_cast<uint64_t>(time_now().unix_time), lost);
    });
}

} // namespace

SnmpDoor::SnmpDoor(const Configuration &configuration)
    : settings(settings_of(configuration)),
      audit(configuration.audit),
      mib(settings.mib),
      agent(settings, audit_log_of(configuration), say)
{
}

bool SnmpDoor::is_as(const Configuration &other) const
{
    return other.snmp && settings == settings_of(other) && audit == other.audit;
}

void SnmpDoor::look(const Sources &sources, uint32_t olt_index, const std::vector<Event> &events)
{
    const std::lock_guard lock(guard); // so that no older state comes behind a newer one
    agent.publish(mib.objects(sources(), {.now = time_now().unix_time, .started = agent.master_started()}));
    std::vector<snmp::Notification> notifications;
    for (const Event &event : events)
        for (snmp::Notification &notification : snmp::notifications_of(event, olt_index, settings.mib))
            notifications.push_back(std::move(notification));
    agent.tell(std::move(notifications));
}

} // namespace front
