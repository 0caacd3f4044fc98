#include "model/alarms.h"

#include <array>

namespace ponsim
{
namespace
{

struct Kind {
    std::string_view name;
    std::string_view severity;
};

// In order of code, from 1 on.
constexpr std::array<Kind, max_alarm> kinds{{
    {"los", "critical"},
    {"dying_gasp", "major"},
    {"rejected", "minor"},
    {"auth_failed", "major"},
    {"bias_high", "major"},
    {"power_low", "major"},
}};

const Kind &kind_of(Alarm alarm)
{
    return kinds.at(static_cast<uint32_t>(alarm) - 1);
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

void raise(const PonPort &port, const Mac &mac, Alarm alarm, Change &change)
{
    const auto code = static_cast<uint32_t>(alarm);
    const auto found = port.alarms.find({mac, code});
    change.alarms.push_back({port.number, mac, code, (found == port.alarms.end() ? 0 : found->second) + 1});
}

} // namespace ponsim
