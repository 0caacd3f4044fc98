#include "model/lifecycle/alarms.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

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
};

const Kind &kind_of(Alarm alarm)
{
    const Kind *found = std::ranges::find(kinds, alarm, &Kind::alarm);
    if (found == std::end(kinds)) throw std::logic_error("an alarm without a name");
    return *found;
}

} // namespace

bool is_alarm(uint32_t code)
{
    return std::ranges::find(kinds, Alarm{code}, &Kind::alarm) != std::end(kinds);
}

std::string_view name_of(Alarm alarm)
{
    return kind_of(alarm).name;
}

std::string_view severity_of(Alarm alarm)
{
    return kind_of(alarm).severity;
}

void raise(const PonPort &port, const Mac &mac, Alarm alarm, Change &change)
{
    const auto code = static_cast<uint32_t>(alarm);
    const auto found = port.alarms.find({mac, code});
    change.put<AlarmCount>({port.number, mac, code}, {(found == port.alarms.end() ? 0 : found->second) + 1});
}

} // namespace ponsim
