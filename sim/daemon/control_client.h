// This is the caller's side of the control module.
#pragma once

#include <string>

namespace ponsim
{

// Sends a line to the ponsim in the calling thread's folder of sockets, and returns its answer. Throws ControlError
// when ponsim refuses the line, and std::runtime_error when ponsim cannot be reached.
std::string send_control(const std::string &line);

} // namespace ponsim
