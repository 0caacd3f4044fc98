// This is the caller's side of the control module.
#pragma once

#include <stdexcept>
#include <string>

namespace ponsim
{

// This error says that no ponsim serves in the folder of sockets.
class NoServiceError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Sends a line to the ponsim in the calling thread's folder of sockets, and returns its answer. Throws ControlError
// when ponsim refuses the line, NoServiceError, and std::runtime_error when ponsim cannot be reached.
std::string send_control(const std::string &line);

} // namespace ponsim
