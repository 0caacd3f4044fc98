// The configuration of ponbridge, a TOML file.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fleet/bridge/engine.h"
#include "fleet/bridge/request.h"
#include "fleet/mqtt/message.h"

namespace fleet
{

using Labels = std::map<std::string, std::string>;

struct BridgedOlt {
    ServedOlt served;
    Labels labels;

    bool operator==(const BridgedOlt &) const = default;
};

// What cannot become different while the program runs.
struct FixedSettings {
    std::string name;
    Broker broker;
    std::string root;
    std::string state; // folder of journals and of what is not published yet
    std::string audit; // file; empty: the program's log
    EngineSettings engine;

    bool operator==(const FixedSettings &) const = default;
};

struct Configuration {
    FixedSettings fixed;
    uint32_t inventory_period = 60; // seconds
    bool events = true;             // what happens at OLTs is watched, and published
    std::vector<BridgedOlt> olts;
    std::optional<Clients> clients; // none: the topics are enough
};

// Throws a toml_file::Error with file, line and reason.
Configuration read_configuration(std::string_view text, const std::string &file);
// Reads a file. Throws a toml_file::Error, also when the file cannot be read.
Configuration read_configuration_file(const std::string &file);

} // namespace fleet
