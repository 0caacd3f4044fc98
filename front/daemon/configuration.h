// The configuration of ponfront, a TOML file.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "collector/collector.h"
#include "history/history.h"
#include "metrics/metrics.h"
#include "plant/plant.h"
#include "reach/reach.h"
#include "snmp/agent/agent.h"
#include "watch/fact.h"

namespace front
{

struct OltSettings {
    std::string name;
    Reach reach;
    uint32_t index = 1; // in tables of SNMP

    bool operator==(const OltSettings &) const = default;
};

struct ListenSettings {
    std::string address = "127.0.0.1";
    uint16_t port = 9911;
    std::string certificate = {}, key = {}; // files in PEM; both or none
    bool behind_tls = false;                // a proxy before it encrypts
    std::vector<std::string> hosts = {};    // names by which browsers know it
    std::string users = {};                 // file; empty: there are none
    bool metrics_need_user = false;

    bool operator==(const ListenSettings &) const = default;
};

struct SnmpSettings {
    snmp::MasterAddress master{.path = "/var/agentx/master", .host = {}};
    snmp::MibSettings mib;
    uint8_t priority = 100;               // before that of snmpd's own tables, which is 127
    std::optional<catalogue::Class> sets; // what managers may set at most

    bool operator==(const SnmpSettings &) const = default;
};

struct Configuration {
    std::vector<OltSettings> olts;
    std::map<std::string, std::shared_ptr<const Plant>> plants; // of OLTs that have one, by their names
    Collector::Periods periods;
    Limits limits;
    std::string history; // file; empty: nothing is kept over a restart
    HistoryLimits history_limits;
    std::optional<ListenSettings> http = ListenSettings{};
    OnuDetail onus = OnuDetail::all;
    std::optional<SnmpSettings> snmp;
    std::string audit; // file in which is noted who changed what; empty: in the log

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
