// This file says how the tool ends.
#pragma once

#include "call/codec/errors.h"

namespace ponctl
{

// The tool uses the words of the call library for operations, arguments and values.
using namespace call;

// A TooLarge result is not written, because it would be many times as long as what the service sent. what() says so,
// for people.
class TooLarge : public Error
{
    using Error::Error;
};

// Nobody was reached who answers for the OLT. what() says why, for people. Nothing was done.
class NotReached : public Error
{
    using Error::Error;
};

enum ExitCode : int {
    exit_success = 0,
    exit_status = 1,       // the service's status is not zero
    exit_usage = 2,        // wrong arguments; nothing was sent
    exit_ipc = 3,          // the exchange failed, or what it delivered is not what the catalogue says, or nobody was
                           // reached
    exit_output = 4,       // the result could not be written
    exit_interrupted = 130 // Ctrl-C ended it, as shells say: 128 and the number of SIGINT
};

} // namespace ponctl
