// The control module: commands of whoever runs the simulation come as lines of words, and are answered with text.
// Beside those that change the OLT there are commands that let time go by, and that tell of it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "daemon/clock.h"
#include "engine/simulator.h"

namespace ponsim
{

// The IPC module beside that of the PON service, on the same sockets' folder; it has one channel.
inline constexpr uint32_t control_module = 106;
inline constexpr uint32_t control_channel = 1;

// Carries out one line. The answer is a text for people; throws ControlError, and StoreError.
std::string control(Simulator &simulator, Clock &clock, std::string_view line);

} // namespace ponsim
