// Packets with a descriptor passed along.
#pragma once

#include <cstddef>

#include <sys/socket.h>

#include "descriptor.h"

namespace board
{

// Sends a packet, and a descriptor with it unless that is negative. Never waits and never raises a signal; returns what
// send(2) does.
ssize_t send_packet(int socket, const void *packet, size_t size, int descriptor);

// The descriptor that came with a packet. Should there be more, they are closed.
Descriptor passed_descriptor(msghdr &message);

} // namespace board
