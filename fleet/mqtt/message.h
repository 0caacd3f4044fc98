// A message as a broker carries it, and where the broker is.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace fleet
{

struct Message {
    std::string topic;
    std::string payload;
    bool retained = false;               // the broker keeps it for whoever subscribes later
    std::string response_topic = {};     // where an answer is published; empty: nowhere
    std::string correlation = {};        // bytes that the answer has, too
    std::optional<uint32_t> expiry = {}; // seconds from when it was sent, less those that the broker kept it

    bool operator==(const Message &) const = default;
};

// A broker listens on a TCP port or on a Unix socket.
struct Broker {
    std::string host = {};
    uint16_t port = 0;
    std::string socket = {};                         // in place of host and port
    std::string ca = {}, certificate = {}, key = {}; // files in PEM; without an authority there is no TLS
    uint16_t keepalive = 30;                         // seconds after which a silent connection is given up

    bool operator==(const Broker &) const = default;
};

} // namespace fleet
