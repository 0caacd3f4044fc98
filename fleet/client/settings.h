// How a client reaches its fleet: a file of TOML.
//
//     client = "alice"                          # else the common name of the certificate, else the user's name
//
//     [broker]                                  # see fleet/mqtt/broker_table.h; files may be named beside this one
//     host = "broker.example.net"
#pragma once

#include <string>
#include <string_view>

#include "fleet/mqtt/message.h"
#include "fleet/protocol/topics.h"

namespace fleet
{

struct Settings {
    std::string client; // a name
    Broker broker = {};
    std::string root = std::string(default_root);

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
