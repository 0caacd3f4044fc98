// How the tool ends.
#pragma once

#include <stdexcept>

namespace ponctl
{

enum ExitCode : int {
    exit_success = 0,
    exit_status = 1, // the service's status is not zero
    exit_usage = 2,  // wrong arguments; nothing was sent
    exit_ipc = 3,    // the exchange failed
    exit_output = 4  // the result could not be written
};

// Wrong arguments: what() names the argument and says what was expected.
class UsageError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

} // namespace ponctl
