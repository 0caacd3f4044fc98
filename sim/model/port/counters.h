// The counters of ports follow from what was offered, and they add up. A PON port receives what its ONUs sent, less
// frames with errors. A GE port sends what its PON ports received, less what they and it drop. In the other direction,
// a GE port receives what its PON ports send and what they drop. No frame is lost without a cause.
#pragma once

#include "model/olt/interfaces.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Frames are counted by length: 64, 65-127, 128-255, 256-511, 512-1023, 1024-1518 octets.
inline constexpr size_t size_classes = 6;
size_t size_class(uint32_t length);

// Octets are those of whole frames with their check sequence.
struct Counters {
    uint64_t in_octets; // octets of frames that were received well
    uint64_t in_unicast;
    uint64_t in_multicast;
    uint64_t in_broadcast;
    uint64_t in_fcs_errors;
    uint64_t in_code_errors;
    uint64_t in_discards;
    uint64_t in_discard_octets;
    uint64_t out_octets;
    uint64_t out_unicast;
    uint64_t out_multicast;
    uint64_t out_broadcast;
    uint64_t out_discards;
    uint64_t out_discard_octets;
    std::array<uint64_t, size_classes> sizes; // received well or sent

    uint64_t in_frames() const { return in_unicast + in_multicast + in_broadcast; }
    uint64_t out_frames() const { return out_unicast + out_multicast + out_broadcast; }
};

Counters pon_counters(const Olt &olt, const PonPort &port);
Counters uplink_counters(const Olt &olt, uint32_t uplink);

// The load is what passes now, in bit/s.
struct Load {
    uint64_t in = 0; // from the network
    uint64_t out = 0;
};
Load load_of(const Rates &rates);
// Returns the load between a PON port and its ONUs.
Load pon_load(const PonPort &port);
Load xaui_load(const Olt &olt, uint32_t xaui);

} // namespace ponsim
