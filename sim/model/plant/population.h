// The population is the OLT as it is found: its ports, the fibre behind them, and the ONUs that have arrived at them.
// It follows from four numbers, or is described by a scenario.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/base/limits.h"
#include "model/base/mac.h"
#include "model/kept/sla.h"
#include "model/plant/device.h"
#include "model/plant/optical_class.h"

namespace ponsim
{

struct Topology;

struct Settings {
    uint64_t seed = 1;
    uint32_t ports = max_ports; // 1 to 16, numbered from 1
    uint32_t arrivals = 8;      // ONUs at each port, 0 to 128
    uint32_t silent = 10;       // percent of them that do not answer once they are bound, 0 to 100

    // These are the text of a scenario, and the OLT's name in it. When they are empty there is no scenario, and the
    // ONUs follow from the numbers.
    std::string scenario = {};
    std::string olt = {};
    // The topology holds what the scenario says of the OLT, and replaces what would follow from the numbers. It is null
    // without a scenario.
    std::shared_ptr<const Topology> topology = {};

    // Returns whether it is the same OLT. The topology need not be compared, because it follows from the scenario.
    bool operator==(const Settings &other) const
    {
        return seed == other.seed && ports == other.ports && arrivals == other.arrivals && silent == other.silent &&
               scenario == other.scenario && olt == other.olt;
    }
};

// Returns what is wrong with the numbers, which are not all possible. Returns an empty text when nothing is.
std::string problem_of(const Settings &settings);

// A Branch is a fibre of a port with what is at its far end: a splitter, or an ONU. The branches form a tree.
struct Branch {
    std::string name;               // the name by which it is cut and mended
    std::optional<uint32_t> parent; // the branch at whose end it begins, which stands before it; none: it begins at the
                                    // port
    uint32_t length;                // m
    int32_t loss;                   // 0.01 dB, for what is at its far end and for its connectors

    bool operator==(const Branch &) const = default;
};

// An Arrival is an ONU that has arrived at a port: it has registered, and waits unless it is bound.
struct Arrival {
    Mac mac;
    uint32_t distance; // m, from the port
    bool silent;       // offline while it is bound
    std::string loid;  // its logical ONU id, which with the password proves its identity
    std::string password;
    uint32_t branch = 0;   // the branch that ends at it
    int32_t loss = 0;      // 0.01 dB, for all splitters and connectors on its way
    std::string name = {}; // scenarios and whoever runs the simulation may use it; empty: they use the address
    std::optional<uint32_t> load_up = {}; // kbit/s that it offers; none: what follows from seed and address
    std::optional<uint32_t> load_down = {};
    bool unplugged = false; // its fibre was unplugged, and its link has not failed yet

    bool operator==(const Arrival &) const = default;
};

// A PortPopulation is what is found at one port. Branches are in the order of the tree, ONUs in that of MAC address.
struct PortPopulation {
    std::vector<Branch> branches;
    std::vector<Arrival> arrivals;
    const OpticalClass *optics = &usual_class();
};

// ServiceTerms are what an ONU is used for, and what is provisioned for it.
struct ServiceTerms {
    bool bound = true;
    bool authenticated = false; // the ONU's LOID has a record
    std::optional<Sla> sla = {};
    std::optional<uint32_t> down = {};
    std::string description = {};
    std::optional<uint32_t> load_up = {};
    std::optional<uint32_t> load_down = {};

    bool operator==(const ServiceTerms &) const = default;
};

// A Topology is what a scenario says of an OLT.
struct Topology {
    std::vector<PortPopulation> ports;
    std::map<std::string, const DeviceType *> kinds; // by name; they live as long as the topology does
    std::map<std::string, ServiceTerms> services;    // by name
    // ONUs that are not named here follow from seed and address.
    ByMac<Equipment> equipment;

    // Returns what the scenario says of the ONU.
    Equipment equipment_of(const Mac &mac) const;
};

// Returns the ONUs at port `pon_port` that follow from the settings' numbers. Each is at the end of a fibre of its own
// behind one splitter. No two ONUs of an OLT have the same address.
PortPopulation population_at(const Settings &settings, uint32_t pon_port);

// Returns the fibre that begins at a port for which nothing else is described.
Branch found_feeder();

// Returns an ONU that follows from the settings' numbers, without a fibre. The numbers from onus_per_port on are those
// of ONUs that come later.
Arrival onu_of_number(const Settings &settings, uint32_t pon_port, uint32_t number);

// Returns the length of the fibre of such an ONU where it begins so far from the port and nothing else says it.
uint32_t drop_of(const Arrival &arrival, uint32_t distance);

} // namespace ponsim
