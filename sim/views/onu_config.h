// The tables of LOIDs, of the stations that ARP knows, and of UNI profiles.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "model/olt/fdb.h"
#include "model/onu/remote.h"

namespace ponsim
{

std::string loids_table(const Olt &olt, std::span<const PonPort> ports);

// Of entries of the PON side.
std::string arp_table(std::span<const FdbEntry> entries);

struct UniProfileRow {
    uint32_t id;
    OnuBlock config; // what a UNI port is told that takes it
    uint32_t ports;  // that took it
};
std::string uni_profiles_table(std::span<const UniProfileRow> profiles);

} // namespace ponsim
