// This file says what is found at a port after ONUs were plugged in and taken away, and where there is room for more.
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "model/kept/plugged.h"
#include "model/plant/population.h"

namespace ponsim
{

// Returns the population of a port with the ONUs that were plugged in, and without those that were taken away. The
// fibre of an ONU that is gone has no name.
PortPopulation population_with(PortPopulation found, std::span<const std::pair<Mac, PluggedOnu>> plugged);

// Returns the number of ways into which a branch is split at its end. It is 1 without a splitter.
uint32_t ways_of(const Branch &branch);

// A FibreEnd is what is between a port and the far end of one of its branches. The depth is counted up to one more than
// deepest_fibre.
struct FibreEnd {
    uint32_t distance = 0; // m
    int32_t loss = 0;      // 0.01 dB, of all splitters and connectors
    uint32_t depth = 0;    // how many fibres follow one another
};
FibreEnd end_of(std::span<const Branch> branches, uint32_t branch);

} // namespace ponsim
