// This file closes descriptors that a peer passed.
//
// What close() waits for is up to the peer: data that a connection still has to send, the user's own file system, or a
// descriptor in the queue of a socket. So no thread that serves or asks closes them, but one of its own does, many at a
// time. It ends when there is nothing more to close.
#pragma once

#include "descriptor.h"

namespace board
{

// Closes the descriptor soon, and never waits.
void close_passed(Descriptor passed);

} // namespace board
