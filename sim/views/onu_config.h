// These are the tables of LOIDs, of the stations that ARP knows, and of UNI profiles.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "model/olt/fdb.h"
#include "model/olt/remote.h"

namespace ponsim
{

std::string loids_table(const Olt &olt, std::span<const PonPort> ports);

// The entries must be of the PON side.
std::string arp_table(std::span<const FdbEntry> entries);

struct UniProfileRow {
    uint32_t id;
    OnuBlock config; // the configuration of a UNI port that takes the profile
    uint32_t ports;  // how many ports have taken it
};
std::string uni_profiles_table(std::span<const UniProfileRow> profiles);

} // namespace ponsim
