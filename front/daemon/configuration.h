// The configuration of ponfront, a TOML file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "collector/collector.h"
#include "metrics/metrics.h"
#include "watch/fact.h"

namespace front
{

struct OltSettings {
    std::string name;
    std::string socket_dir; // empty: that of the board library

    bool operator==(const OltSettings &) const = default;
};

struct ListenSettings {
    std::string address = "127.0.0.1";
    uint16_t port = 9911;
    std::string certificate = {}, key = {}; // files in PEM; both or none
    bool behind_tls = false;                // a proxy before it encrypts
    std::vector<std::string> hosts = {};    // names by which browsers know it
    std::string users = {};                 // file; empty: there are none
    std::string audit = {};                 // file; empty: in the log
    bool metrics_need_user = false;

    bool operator==(const ListenSettings &) const = default;
};

struct Configuration {
    std::vector<OltSettings> olts;
    Collector::Periods periods;
    Limits limits;
    std::string history; // file; empty: nothing is kept over a restart
    uint64_t most_events = 100'000;
    std::optional<ListenSettings> http = ListenSettings{};
    OnuDetail onus = OnuDetail::all;

    // What an OLT needs to be collected anew when it changes.
    bool collects_as(const Configuration &other) const;
};

// Returns the configuration of a text without any line.
Configuration default_configuration();
// Throws a toml_file::Error with file, line and reason.
Configuration read_configuration(std::string_view text, const std::string &file);
// Reads a file. Throws a toml_file::Error, also when the file cannot be read.
Configuration read_configuration_file(const std::string &file);

} // namespace front
