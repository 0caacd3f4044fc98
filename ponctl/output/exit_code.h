// How the tool ends.
#pragma once

#include "call/codec/errors.h"

namespace ponctl
{

// The tool speaks of operations, arguments and values in the words of the library that calls.
using namespace call;

enum ExitCode : int {
    exit_success = 0,
    exit_status = 1, // the service's status is not zero
    exit_usage = 2,  // wrong arguments; nothing was sent
    exit_ipc = 3,    // the exchange failed
    exit_output = 4  // the result could not be written
};

} // namespace ponctl
