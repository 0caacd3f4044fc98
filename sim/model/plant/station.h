// The stations in the customers' and in the operator's network, whose frames cross the OLT.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/plant/device.h"

namespace ponsim
{

inline constexpr ModelTime shortest_silence = 2 * ms_per_second;
inline constexpr ModelTime longest_silence = 8 * ms_per_second;

// Sends a frame every `period`, the first at `phase`.
struct Station {
    Mac mac;
    uint32_t port; // the ONU's UNI port, or the GE uplink
    uint32_t vlan; // beyond the ONU
    ModelTime phase;
    ModelTime period;

    // The time of the last frame up to `time`; none before the first.
    std::optional<ModelTime> last_frame(ModelTime time) const;
    // Of the first frame after `time`.
    ModelTime next_frame(ModelTime time) const;
};

// Those behind the UNI ports of an ONU that are up, which follow from the OLT's seed, the ONU's MAC address and its
// device. No two stations of an OLT have the same address, where no two ONUs have the same bytes 2, 4, 5 and 6 of
// theirs.
std::vector<Station> stations_behind(uint64_t seed, const Mac &onu, const Device &device);

// Those of the network side.
std::vector<Station> network_stations(uint64_t seed);

} // namespace ponsim
