// The table [broker] in a file of TOML: where the broker is, and what all topics begin with.
//
//     [broker]
//     host = "broker.example.net"               # or socket = "/run/mosquitto/mosquitto.sock"
//     port = 8883                               # 8883 with an authority, else 1883
//     root = "pon"
//     ca = "/etc/ponctl/fleet/ca.pem"           # with it, the connection is encrypted
//     certificate = "/etc/ponctl/fleet/alice.pem"
//     key = "/etc/ponctl/fleet/alice.key"
//     keepalive = 30                            # seconds after which a silent connection is given up
#pragma once

#include <string>

#include "fleet/mqtt/message.h"
#include "fleet/protocol/topics.h"
#include "toml_file/section.h"

namespace fleet
{

struct BrokerTable {
    Broker broker;
    std::string root = std::string(default_root);
};

// Returns the key of the table.
toml_file::Key broker_key();

// What a path in the table may be: a relative one is beside the file.
enum class Paths : uint8_t { from_the_root, relative_too };

// Reads the table of a file, which must have one. Throws a toml_file::Error that says what is wrong, and in which line.
BrokerTable read_broker(const toml_file::Section &file, Paths paths);

} // namespace fleet
