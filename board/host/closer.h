// This file closes what a peer had a hand in.
//
// What close() waits for is up to the peer: data that a connection still has to send, the user's own file system, or
// such a descriptor in the queue of a socket. So no thread that serves or asks closes these, but threads of their own
// do, many at a time. They end when there is nothing more to close.
#pragma once

#include <vector>

#include "descriptor.h"

namespace board
{

// Closes descriptors that a peer passed. Waits a moment only when very many are to be closed already, because the
// process cannot have any number of them.
void close_passed(std::vector<Descriptor> passed);
void close_passed(Descriptor passed);

// Closes an own socket. Nobody waits for descriptors that nobody has received over it, or over connections to it that
// nobody has accepted.
void hang_up(Descriptor socket);

} // namespace board
