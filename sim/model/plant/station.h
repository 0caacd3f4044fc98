// Stations are in the customers' and in the operator's network. Their frames cross the OLT.
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

// A Station sends a frame every `period`, the first at `phase`.
struct Station {
    Mac mac;
    uint32_t port; // the ONU's UNI port, or the GE uplink
    uint32_t vlan; // VLAN beyond the ONU
    ModelTime phase;
    ModelTime period;

    // Returns the time of the last frame up to `time`. Returns no time before the first frame.
    std::optional<ModelTime> last_frame(ModelTime time) const;
    // Returns the time of the first frame after `time`.
    ModelTime next_frame(ModelTime time) const;
};

// Returns the stations behind the UNI ports of an ONU. They follow from the OLT's seed, the ONU's MAC
// address and its device. No two stations of an OLT have the same address as long as no two ONUs have the same bytes 2,
// 4, 5 and 6 of their addresses.
std::vector<Station> stations_behind(uint64_t seed, const Mac &onu, const Device &device);

// Returns the stations of the network side.
std::vector<Station> network_stations(uint64_t seed);

} // namespace ponsim
