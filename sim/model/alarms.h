// Alarms of ONUs. An alarm is raised by the change that is its cause, and stays until it is cleared.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/olt.h"

namespace ponsim
{

enum class Alarm : uint32_t {
    los = 1,     // was online, and now is not ranged
    dying_gasp,  // was rebooted by command
    rejected,    // registers, and is on the black list
    auth_failed, // is on the fibre, and now is turned away for its LOID
};

inline constexpr uint32_t max_alarm = 4;

std::string_view name_of(Alarm alarm);
std::string_view severity_of(Alarm alarm); // critical, major or minor

// Once more for this ONU, at most once in a change.
void raise(const PonPort &port, const Mac &mac, Alarm alarm, Change &change);

} // namespace ponsim
