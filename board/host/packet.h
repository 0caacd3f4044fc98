// This file sends and receives packets that pass a descriptor along.
#pragma once

#include <cstddef>

#include <sys/socket.h>

#include "descriptor.h"

namespace board
{

// Sends a packet, and a descriptor with it unless the descriptor is negative. Never waits and never raises a signal.
// Returns what send(2) returns.
ssize_t send_packet(int socket, const void *packet, size_t size, int descriptor);

// Returns the descriptor that came with a packet. If there are more descriptors, they are closed.
Descriptor passed_descriptor(msghdr &message);

// Returns whether the descriptor is a socket on which an answer to a datagram can be sent.
bool is_way_back(const Descriptor &passed);

} // namespace board
