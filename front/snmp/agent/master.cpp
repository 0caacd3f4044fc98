#include "snmp/agent/master.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace front::snmp
{
namespace
{

constexpr int patience = 3000; // milliseconds, for a connection or for room in it

struct FreeAddresses {
    void operator()(addrinfo *addresses) const { freeaddrinfo(addresses); }
};

std::unique_ptr<addrinfo, FreeAddresses> found_address(const std::string &host, uint16_t port)
{
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) return nullptr;
    return std::unique_ptr<addrinfo, FreeAddresses>(found);
}

bool is_ready(int descriptor, short what)
{
    pollfd ready{descriptor, what, 0};
    return poll(&ready, 1, patience) == 1;
}

[[noreturn]] void fail(int error)
{
    throw std::runtime_error(std::strerror(error));
}

} // namespace

std::optional<MasterAddress> to_master_address(std::string_view text)
{
    constexpr std::string_view unix_word = "unix:", tcp_word = "tcp:";
    if (text.starts_with(unix_word)) text.remove_prefix(unix_word.size());
    if (text.starts_with('/')) {
        if (text.size() >= sizeof sockaddr_un{}.sun_path) return std::nullopt;
        return MasterAddress{.path = std::string(text), .host = {}};
    }
    if (!text.starts_with(tcp_word)) return std::nullopt;
    text.remove_prefix(tcp_word.size());
    const size_t colon = text.rfind(':');
    if (colon == text.npos) return std::nullopt;
    MasterAddress address{.path = {}, .host = std::string(text.substr(0, colon))};
    const char *const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data() + colon + 1, end, address.port);
    if (error != std::errc{} || behind != end || address.port == 0) return std::nullopt;
    if (address.host.starts_with('[') && address.host.ends_with(']'))
        address.host = address.host.substr(1, address.host.size() - 2);
    if (!found_address(address.host, address.port)) return std::nullopt;
    return address;
}

std::string text_of(const MasterAddress &address)
{
    if (!address.path.empty()) return "unix:" + address.path;
    const bool is_ipv6 = address.host.find(':') != std::string::npos;
    return "tcp:" + (is_ipv6 ? "[" + address.host + "]" : address.host) + ":" + std::to_string(address.port);
}

Connection::Connection(const MasterAddress &address)
{
    try {
        connect_to(address);
    } catch (...) {
        close(descriptor);
        throw;
    }
}

Connection::~Connection()
{
    close(descriptor);
}

void Connection::connect_to(const MasterAddress &address)
{
    sockaddr_un local{};
    const sockaddr *to = reinterpret_cast<const sockaddr *>(&local);
    socklen_t length = sizeof local;
    std::unique_ptr<addrinfo, FreeAddresses> found;
    if (address.path.empty()) {
        found = found_address(address.host, address.port);
        if (!found) fail(EADDRNOTAVAIL);
        to = found->ai_addr;
        length = found->ai_addrlen;
    } else {
        local.sun_family = AF_UNIX;
        address.path.copy(local.sun_path, sizeof local.sun_path - 1);
    }
    descriptor = ::socket(to->sa_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0) fail(errno);
    // Answers are short and each is waited for.
    const int yes = 1;
    if (found) setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    if (connect(descriptor, to, length) == 0) return;
    if (errno != EINPROGRESS) fail(errno);
    if (!is_ready(descriptor, POLLOUT)) fail(ETIMEDOUT);
    int error = 0;
    length = sizeof error;
    getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &length);
    if (error) fail(error);
}

bool Connection::send(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent >= 0)
            bytes.remove_prefix(static_cast<size_t>(sent));
        else if (errno != EINTR && (errno != EAGAIN || !is_ready(descriptor, POLLOUT)))
            return false;
    }
    return true;
}

bool Connection::receive(std::string &into) const
{
    char bytes[16384];
    const ssize_t count = recv(descriptor, bytes, sizeof bytes, 0);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    into.append(bytes, static_cast<size_t>(count));
    return count > 0;
}

} // namespace front::snmp
