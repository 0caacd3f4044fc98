// The calling thread's client half, as the data store sees it.
#pragma once

#include "frame.h"

namespace board
{

// The result that came with the calling thread's last exchange, until the next one.
Result last_result();
// Copies a result in shared memory; false when the service took it back.
bool copy_last_result(char *to);

} // namespace board
