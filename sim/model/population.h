// The OLT as it is found: its ports, and the ONUs that have arrived at them. All of it follows from four numbers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/mac.h"

namespace ponsim
{

inline constexpr uint32_t max_ports = 16;
inline constexpr uint32_t onus_per_port = 128;
inline constexpr uint32_t ge_uplinks = 4;       // to the network, numbered from 1
inline constexpr uint32_t max_distance = 20000; // m

struct Settings {
    uint64_t seed = 1;
    uint32_t ports = max_ports; // 1 to 16, numbered from 1
    uint32_t arrivals = 8;      // ONUs at each port, 0 to 128
    uint32_t silent = 10;       // percent of them that do not answer once they are bound

    bool operator==(const Settings &) const = default;
};

// An ONU that has arrived at a port: it has registered, and waits unless it is bound.
struct Arrival {
    Mac mac;
    uint32_t distance; // m
    bool silent;       // offline while it is bound
    std::string loid;  // what it proves who it is with: its logical ONU id, and a password
    std::string password;

    bool operator==(const Arrival &) const = default;
};

// The ONUs at port `pon_port`, in order of MAC address. No two ONUs of an OLT have the same address.
std::vector<Arrival> arrivals_at(const Settings &settings, uint32_t pon_port);

} // namespace ponsim
