// How bandwidth is shared. All of it is exact: the same demands always get the same.
#pragma once

#include <span>
#include <vector>

#include "model/olt/traffic.h"

namespace ponsim
{

// Of frames, or the bandwidth of their rates.
uint64_t octets_of(const PerFlow &frames);

// Rates of this bandwidth together, less at most one of the shortest frames in rate_unit seconds, in proportion to
// these; none where these are none.
PerFlow spread(const PerFlow &proportions, Bandwidth bandwidth);
// What is left of the rates where there is no more room than this: no flow gains.
PerFlow cut(const PerFlow &rates, Bandwidth room);
// What of a bandwidth passes where `total`, of which it is a part, share the room in proportion.
Bandwidth portion(Bandwidth part, Bandwidth room, Bandwidth total);

// What an ONU wants to send.
struct Want {
    Bandwidth bandwidth;
    Sla sla;
};
// Dynamic bandwidth allocation: what each ONU may send.
//
// First come the fixed bandwidths, which are taken from the room whether they are used or not, and what is used of the
// assured ones; where the room is not even enough for these, each has the same part of them. The rest goes to those
// that want more, up to their maximum: to the highest priority first, among those of one priority by weight.
std::vector<Bandwidth> grants(Bandwidth room, std::span<const Want> wants);

} // namespace ponsim
