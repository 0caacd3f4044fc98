// Where the master agent listens, and a connection to it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace front::snmp
{

struct MasterAddress {
    std::string path; // of a Unix socket; empty: what follows counts
    std::string host;
    uint16_t port = 0;

    bool operator==(const MasterAddress &) const = default;
};

// Reads the path of a Unix socket, which may follow "unix:", or "tcp:" with an IPv4 address, or an IPv6 address in
// brackets, and a port.
std::optional<MasterAddress> to_master_address(std::string_view text);
// Returns the address as people write it.
std::string text_of(const MasterAddress &address);

// A Connection is a socket that does not wait.
class Connection
{
public:
    // Connects within a few seconds. Throws std::runtime_error that says why it cannot.
    explicit Connection(const MasterAddress &address);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    // Sends everything, within a few seconds. Returns whether it could.
    bool send(std::string_view bytes) const;
    // Adds what has arrived, if anything. Returns false when the other side is gone.
    bool receive(std::string &into) const;

    int socket() const { return descriptor; }

private:
    void connect_to(const MasterAddress &address);

    int descriptor = -1;
};

} // namespace front::snmp
