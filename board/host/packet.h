// This file sends and receives packets that pass a descriptor along.
#pragma once

#include <cstddef>
#include <vector>

#include <sys/socket.h>

#include "descriptor.h"

// The C library's headers may be older than this option.
#ifndef SO_PASSRIGHTS
#define SO_PASSRIGHTS 83
#endif

namespace board
{

// Sends a packet, and a descriptor with it unless the descriptor is negative. Never waits and never raises a signal.
// Returns what send(2) returns.
ssize_t send_packet(int socket, const void *packet, size_t size, int descriptor);

// Receives a packet as recv(2) does with MSG_TRUNC, and appends all descriptors that came with it. Whoever calls this
// closes them by close_passed() or keeps them. Fills in the sender when the socket is told it.
ssize_t receive_packet(int socket, void *packet, size_t size, int flags, std::vector<Descriptor> &passed,
                       ucred *sender = nullptr);

// Returns the first of the descriptors, or none. Closes the others.
Descriptor take_first(std::vector<Descriptor> passed);

// Returns whether this is a socket whose option has this value.
bool has_option(int socket, int option, int wanted);

// Returns whether the descriptor is a socket on which an answer to a datagram can be sent.
bool is_way_back(const Descriptor &passed);

} // namespace board
