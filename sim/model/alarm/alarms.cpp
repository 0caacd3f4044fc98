#include "model/alarm/alarms.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "model/base/text.h"

namespace ponsim
{
namespace
{

struct Kind {
    Alarm alarm;
    std::string_view name;
    std::string_view severity;
};

constexpr Kind kinds[] = {
    {Alarm::los, "los", "critical"},
    {Alarm::dying_gasp, "dying_gasp", "major"},
    {Alarm::rejected, "rejected", "minor"},
    {Alarm::auth_failed, "auth_failed", "major"},
    {Alarm::bias_high, "bias_high", "major"},
    {Alarm::power_low, "power_low", "major"},
    {Alarm::degraded, "receive_degraded", "minor"},
    {Alarm::rogue, "rogue", "critical"},
    {Alarm::deregistered, "deregistered", "major"},
    {Alarm::receive_overload, "receive_overload", "major"},
    {Alarm::onu_los, "onu_los", "critical"},
    {Alarm::onu_degraded, "onu_receive_degraded", "minor"},
    {Alarm::onu_overload, "onu_receive_overload", "major"},
    {Alarm::oam_link_lost, "oam_link_lost", "major"},
    {Alarm::port_los, "port_los", "critical"},
    {Alarm::transmitter_off, "transmitter_off", "critical"},
    {Alarm::uni_loop, "uni_loop", "minor"},
    {Alarm::uplink_down, "uplink_down", "critical"},
    {Alarm::wrong_port, "wrong_port", "major"},
    {Alarm::same_loid, "same_loid", "major"},
    {Alarm::same_mac, "same_mac", "major"},
};

constexpr std::string_view causes[] = {
    "unknown",    "fibre", "transmitter", "laser", "rogue", "port_los", "power", "reboot",    "command",   "distance",
    "black_list", "loid",  "bit_errors",  "age",   "loop",  "phy",      "test",  "elsewhere", "same_loid", "same_mac"};
static_assert(std::size(causes) == max_alarm_cause + 1);

static_assert(std::size(kinds) == max_alarm - 1, "an alarm has no name, or is_alarm() says otherwise");

const Kind &kind_of(Alarm alarm)
{
    const Kind *found = std::ranges::find(kinds, alarm, &Kind::alarm);
    if (found == std::end(kinds)) throw std::logic_error("an alarm without a name");
    return *found;
}

bool comes_back(const Olt &olt, const AlarmKey &key, const AlarmRecord &record)
{
    const Alarm alarm{key.alarm};
    if (!record.active() || record.reason.cause == AlarmCause::test || !holds(olt, key)) return false;
    if (alarm == Alarm::dying_gasp || alarm == Alarm::deregistered) return false;
    const bool of_absence = alarm == Alarm::los || alarm == Alarm::onu_los || alarm == Alarm::oam_link_lost;
    return !of_absence || olt.id_at(key.pon_port, key.mac);
}

} // namespace

std::string_view name_of(Alarm alarm)
{
    return kind_of(alarm).name;
}

std::string_view severity_of(Alarm alarm)
{
    return kind_of(alarm).severity;
}

std::string_view name_of(AlarmCause cause)
{
    const auto number = static_cast<uint32_t>(cause);
    if (number >= std::size(causes)) throw std::logic_error("a cause without a name");
    return causes[number];
}

std::string_view state_of(bool active)
{
    return active ? "active" : "cleared";
}

std::string place_of(const Olt &olt, const AlarmKey &key, const AlarmReason &reason)
{
    if (Alarm{key.alarm} == Alarm::uplink_down) return "uplink " + std::to_string(key.unit);
    if (key.unit != 0) return "UNI " + std::to_string(key.unit);
    if (reason.cause == AlarmCause::elsewhere) {
        const std::optional<uint32_t> onu_id = olt.id_at(reason.other_port, key.mac);
        return "expected at port " + std::to_string(reason.other_port) +
               (onu_id ? " id " + std::to_string(*onu_id) : std::string());
    }
    if (reason.cause == AlarmCause::same_mac) return "also at port " + std::to_string(reason.other_port);
    if (!is_zero(reason.other))
        return "ONU " + text::mac_text(reason.other) + " at port " + std::to_string(reason.other_port);
    const PonPort &port = *olt.port(key.pon_port);
    return reason.branch && *reason.branch < port.branches.size() ? port.branches[*reason.branch].name : std::string();
}

void raise(const Olt &olt, const AlarmKey &key, const AlarmReason &reason, Change &change)
{
    const AlarmRecord *before = olt.alarm(key);
    AlarmRecord record = before ? *before : AlarmRecord{0};
    ++record.count;
    record.reason = reason;
    if (!before || !before->active()) {
        record.raised = olt.now();
        record.cleared.reset();
    }
    change.put<AlarmRecord>(key, record);
}

void end(const Olt &olt, const AlarmKey &key, Change &change)
{
    AlarmRecord record = *olt.alarm(key);
    record.cleared = olt.now();
    change.put<AlarmRecord>(key, record);
}

void clear_by_command(const Olt &olt, const AlarmKey &key, Change &change)
{
    const AlarmRecord &record = *olt.alarm(key);
    change.drop<AlarmRecord>(key);
    if (comes_back(olt, key, record))
        change.put<AlarmRecord>(key, {.count = 1, .raised = olt.now(), .reason = record.reason});
}

} // namespace ponsim
