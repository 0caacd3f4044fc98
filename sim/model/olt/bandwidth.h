// This file says how bandwidth is shared. All of it is exact: the same demands always get the same shares.
#pragma once

#include <span>
#include <vector>

#include "model/olt/traffic.h"

namespace ponsim
{

// Returns the octets of the frames, or the bandwidth of their rates.
uint64_t octets_of(const PerFlow &frames);

// Returns rates in proportion to the given ones that have this bandwidth together, less at most one of the shortest
// frames in rate_unit seconds. Returns no rates where none are given.
PerFlow spread(const PerFlow &proportions, Bandwidth bandwidth);
// Returns what is left of the rates when there is no more room than this. No flow gets more than before.
PerFlow cut(const PerFlow &rates, Bandwidth room);
// Returns how much of a bandwidth passes when all bandwidths share the room in proportion. `total` is the sum of all.
Bandwidth portion(Bandwidth part, Bandwidth room, Bandwidth total);

// A Want says what an ONU wants to send.
struct Want {
    Bandwidth bandwidth;
    Sla sla;
};
// Returns what each ONU may send, by dynamic bandwidth allocation.
//
// First come the fixed bandwidths, which are taken from the room whether they are used or not, and the used part of the
// assured ones. When the room is not even enough for these, each ONU has the same part of them. The rest goes to the
// ONUs that want more, up to their maximum: to the highest priority first, and by weight among ONUs of the same
// priority.
std::vector<Bandwidth> grants(Bandwidth room, std::span<const Want> wants);

} // namespace ponsim
