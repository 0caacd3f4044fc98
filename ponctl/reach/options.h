// What a command line says of the OLTs that it goes to.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace ponctl
{

struct FleetOptions {
    std::string olt;                       // a selector, a name or ssh://HOST; empty: the local OLT
    std::string settings;                  // file of how the fleet is reached; empty: the user's own
    std::string concurrency, limit, waves; // as they were given; empty: not given
    std::string max_failures, check;
    std::string resumed;              // id of the run that goes on; empty: a new one
    std::string resumed_max_failures; // in place of what its command line says; empty: not given
};

// How requests are made at OLTs of a fleet.
struct FleetRequests {
    uint32_t timeout = 10'000;  // milliseconds for each
    std::filesystem::path runs; // folder of what is kept of runs; empty: nothing can be kept
};

// Returns whether the command line goes to one OLT, as to a local one.
bool is_one_olt(const FleetOptions &options);

} // namespace ponctl
