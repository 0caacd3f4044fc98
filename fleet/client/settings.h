// How a client reaches its fleet: a file of TOML.
//
//     client = "alice"                          # else the common name of the certificate, else the user's name
//
//     [broker]
//     host = "broker.example.net"               # or socket = "/run/mosquitto/mosquitto.sock"
//     port = 8883                               # 8883 with an authority, else 1883
//     root = "pon"
//     ca = "/etc/ponctl/fleet/ca.pem"           # with it, the connection is encrypted
//     certificate = "/etc/ponctl/fleet/alice.pem"
//     key = "/etc/ponctl/fleet/alice.key"
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "fleet/protocol/topics.h"

namespace fleet
{

struct Settings {
    std::string client;       // a name
    std::string host, socket; // one of them
    uint16_t port = 0;        // with a host
    std::string root = std::string(default_root);
    std::string ca = {}, certificate = {}, key = {}; // files; relative ones are beside the file of the settings

    bool operator==(const Settings &) const = default;
};

// Returns the file of the settings: the given one, else that of PONCTL_FLEET, else $XDG_CONFIG_HOME/ponctl/fleet.toml
// or
// ~/.config/ponctl/fleet.toml. The text is empty when the user has no home.
std::string settings_file(std::string_view given);

// Each function throws a toml_file::Error that says what is wrong, and in which line.
Settings read_settings(const std::string &file);
// The text has this name in errors.
Settings settings_of(std::string_view text, const std::string &name);

} // namespace fleet
