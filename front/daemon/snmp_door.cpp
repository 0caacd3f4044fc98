#include "daemon/snmp_door.h"

#include <algorithm>

#include "daemon/olt.h"
#include "program_log/log.h"

namespace front
{

using program_log::log_line;
using program_log::LogLevel;
namespace
{

void say(bool well, const std::string &text)
{
    log_line(well ? LogLevel::info : LogLevel::warning, text);
}

snmp::AgentSettings settings_of(const Configuration &configuration)
{
    const SnmpSettings &snmp = configuration.snmp.value();
    snmp::AgentSettings settings{
        .master = snmp.master, .mib = snmp.mib, .priority = snmp.priority, .sets = {.up_to = snmp.sets, .olts = {}}};
    for (const OltSettings &olt : configuration.olts)
        settings.sets.olts[olt.index] = {olt.name, olt.reach};
    return settings;
}

// Managers have no names here: who may set something is known to the master agent alone.
snmp::Notes notes_in(const std::shared_ptr<WriteLog> &log, const snmp::AgentSettings &settings)
{
    const auto client_at = [master = text_of(settings.master)](const std::string &olt) {
        return audit::Client{.user = "SNMP", .address = master, .olt = olt};
    };
    return {.sent = [=](const std::string &olt, const audit::Wanted &wanted,
                        std::string_view result) { log->note(client_at(olt), wanted, result); },
            .refused = [=](const std::string &olt, const audit::Wanted &wanted,
                           std::string_view reason) { log->note_refused(client_at(olt), wanted, reason); }};
}

} // namespace

SnmpDoor::SnmpDoor(const Configuration &configuration, const std::shared_ptr<WriteLog> &log)
    : settings(settings_of(configuration)), mib(settings.mib), agent(settings, notes_in(log, settings), say)
{
}

bool SnmpDoor::is_as(const Configuration &other) const
{
    return other.snmp && settings == settings_of(other);
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
