// This is the control module. Whoever runs the simulation sends commands as lines of words, which are answered with
// text. Besides the commands that change the OLT there are commands that let time pass, and commands that report on the
// simulation.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "daemon/clock.h"
#include "engine/simulator.h"

namespace ponsim
{

// This IPC module stands beside that of the PON service, in the same folder of sockets. It has one channel.
inline constexpr uint32_t control_module = 106;
inline constexpr uint32_t control_channel = 1;

// Carries out one line. The answer is a text for people. Throws ControlError and StoreError.
std::string control(Simulator &simulator, Clock &clock, std::string_view line);

} // namespace ponsim
