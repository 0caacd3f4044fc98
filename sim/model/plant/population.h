// The OLT as it is found: its ports, the fibre behind them, and the ONUs that have arrived at them. All of it follows
// from four numbers, or is described by a scenario.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/base/limits.h"
#include "model/base/mac.h"

namespace ponsim
{

struct DeviceType;
struct Topology;

struct Settings {
    uint64_t seed = 1;
    uint32_t ports = max_ports; // 1 to 16, numbered from 1
    uint32_t arrivals = 8;      // ONUs at each port, 0 to 128
    uint32_t silent = 10;       // percent of them that do not answer once they are bound

    // The text of a scenario, and the OLT's name in it; empty: there is none, and the ONUs follow from the numbers.
    std::string scenario = {};
    std::string olt = {};
    // What it says of the OLT, in the place of what would follow from the numbers; null without one.
    std::shared_ptr<const Topology> topology = {};

    // Whether it is the same OLT: the topology follows from the scenario.
    bool operator==(const Settings &other) const
    {
        return seed == other.seed && ports == other.ports && arrivals == other.arrivals && silent == other.silent &&
               scenario == other.scenario && olt == other.olt;
    }
};

// A fibre of a port, and what is at its far end: a splitter, or an ONU. They form a tree.
struct Branch {
    std::string name;               // by which it is cut and mended
    std::optional<uint32_t> parent; // the branch that it goes on from, which stands before it; none: the port
    uint32_t length;                // m
    int32_t loss;                   // 0.01 dB, of what is at its far end and of its connectors

    bool operator==(const Branch &) const = default;
};

// An ONU that has arrived at a port: it has registered, and waits unless it is bound.
struct Arrival {
    Mac mac;
    uint32_t distance; // m
    bool silent;       // offline while it is bound
    std::string loid;  // what it proves who it is with: its logical ONU id, and a password
    std::string password;
    uint32_t branch = 0;   // that ends at it
    int32_t loss = 0;      // 0.01 dB, of all splitters and connectors on its way
    std::string name = {}; // by which scenarios and whoever runs the simulation may call it; empty: by its address
    std::optional<uint32_t> load_up = {}; // kbit/s that it offers; none: what follows from seed and address
    std::optional<uint32_t> load_down = {};

    bool operator==(const Arrival &) const = default;
};

// What is found at one port. Branches are in order of the tree, ONUs in order of MAC address.
struct PortPopulation {
    std::vector<Branch> branches;
    std::vector<Arrival> arrivals;
};

// What a scenario says of an OLT.
struct Topology {
    std::vector<PortPopulation> ports;
    // Of ONUs whose kind does not follow from seed and address. The kinds live as long as the topology does.
    std::map<Mac, const DeviceType *> kinds;
};

// The ONUs that follow from the settings' numbers, at port `pon_port`: at the ends of fibres of their own behind one
// splitter. No two ONUs of an OLT have the same address.
PortPopulation population_at(const Settings &settings, uint32_t pon_port);

} // namespace ponsim
