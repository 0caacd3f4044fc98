// This file says how bandwidth is shared. All of it is exact: the same demands always get the same shares.
#pragma once

#include <span>
#include <vector>

#include "model/traffic/traffic.h"

namespace ponsim
{

// A Measure says what is counted of a frame: its octets, as contracts do, or all for which it occupies a line, with the
// preamble before it and the gap behind it.
enum class Measure { frame, line };
inline constexpr uint32_t preamble_and_gap = 20; // octets; IEEE 802.3, 4.4.2

constexpr uint64_t length_of(const Flow &flow, Measure measure)
{
    return flow.length + (measure == Measure::line ? preamble_and_gap : 0);
}

// Returns the octets of the frames, or the bandwidth of their rates.
uint64_t octets_of(const PerFlow &frames, Measure measure = Measure::frame);

void add(PerFlow &sum, const PerFlow &rates);
PerFlow without(const PerFlow &rates, const PerFlow &part);

// Shares a number among parts in proportion, exactly: together they get all of it. Nothing is shared when the
// proportion of all parts is 0. Calls give(part, share) for each part.
void apportion(uint64_t number, size_t parts, const auto &proportion, const auto &give)
{
    uint64_t total = 0;
    for (size_t part = 0; part < parts; ++part)
        total += proportion(part);
    uint64_t seen = 0;
    uint64_t given = 0;
    for (size_t part = 0; part < parts && total > 0; ++part) {
        seen += proportion(part);
        const uint64_t share = number * seen / total - given;
        give(part, share);
        given += share;
    }
}

// Returns rates in proportion to the given ones that have this bandwidth together, less at most one of the shortest
// frames in rate_unit seconds. Returns no rates where none are given.
PerFlow spread(const PerFlow &proportions, Bandwidth bandwidth, Measure measure = Measure::frame);
// Returns what is left of the rates when there is no more room than this. No flow gets more than before.
PerFlow cut(const PerFlow &rates, Bandwidth room, Measure measure = Measure::frame);
// Returns how much of a bandwidth passes when all bandwidths share the room in proportion. `total` is the sum of all.
Bandwidth portion(Bandwidth part, Bandwidth room, Bandwidth total);

// A Want says what an ONU wants to send, and what its SLA says of that. All bandwidths are those on the line.
struct Want {
    Bandwidth bandwidth;
    Bandwidth fixed;
    Bandwidth assured;
    Bandwidth maximum;
    uint32_t priority;
    uint32_t weight;
};
// SLAs are about the octets of frames. The shorter the frames are, the more of the line they take.
Want want_of(const PerFlow &wanted, const Sla &sla);
// Returns how much of the room an ONU takes when there is enough for all.
Bandwidth most_taken(const Want &want);

// Returns what each ONU may send, by dynamic bandwidth allocation.
//
// First come the fixed bandwidths, which are taken from the room whether they are used or not, and the used part of the
// assured ones. When the room is not even enough for these, each ONU has the same part of them. The rest goes to the
// ONUs that want more, up to their maximum: to the highest priority first, and by weight among ONUs of the same
// priority.
std::vector<Bandwidth> grants(Bandwidth room, std::span<const Want> wants);

} // namespace ponsim
