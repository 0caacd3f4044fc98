// Addresses of sockets.
#pragma once

#include <cstdint>
#include <string>

#include <sys/socket.h>

namespace front
{

struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t length = 0;
};

// Throws std::runtime_error when the text is no IPv4 or IPv6 address.
SocketAddress address_of(const std::string &text, uint16_t port);
// Returns the address without its port. An IPv4 address is written as that, also where IPv6 carries it.
std::string text_of(const sockaddr &address);
// Returns whether the text is an IPv4 or IPv6 address.
bool is_address(const std::string &text);
// Returns whether only this machine reaches the address.
bool is_of_this_machine(const std::string &address);

} // namespace front
