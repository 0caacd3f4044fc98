// The caller's side of the control module.
#pragma once

#include <string>

namespace ponsim
{

// Has the ponsim on the calling thread's folder of sockets carry out a line, and returns what it says. Throws
// ControlError: it refuses the line; std::runtime_error: it cannot be reached.
std::string send_control(const std::string &line);

} // namespace ponsim
