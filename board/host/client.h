// This file gives the data store access to the calling thread's client half.
#pragma once

#include "frame.h"

namespace board
{

// Returns the result that came with the calling thread's last exchange. It is valid until the next exchange.
Result last_result();
// Copies the first bytes of that result from shared memory. Returns false when it has not so many, or when the service
// took it back.
bool copy_last_result(char *to, uint32_t length);

} // namespace board
