// Multicast at ONUs: what the users behind their UNI ports watch, and the groups that the ports join.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/plant/device.h"

namespace ponsim
{

inline constexpr uint32_t max_mc_vlans = 8;        // of a UNI port
inline constexpr uint32_t max_mc_translations = 8; // of a UNI port
inline constexpr uint32_t max_mc_groups = 128;     // of an ONU
inline constexpr uint32_t max_uni_mc_groups = 255; // that a UNI port can be told to join at most

// A group that a UNI port joins, in a multicast VLAN.
struct McGroup {
    uint32_t uni;
    uint32_t vlan;
    Mac mac;

    bool operator==(const McGroup &) const = default;
};

// Whether a kind of ONU does IGMP/MLD snooping or controllable multicast.
bool knows_multicast(const DeviceType &type);

// Whether frames can have the VLAN's tag.
bool is_vlan(uint32_t vlan);
// Whether the MAC address is that of a multicast group of IPv4 or IPv6.
bool is_group(const Mac &mac);

// What there is of multicast at a UNI port until it is configured otherwise, and who uses it.
struct UniViewers {
    std::vector<uint32_t> vlans; // the multicast VLANs
    std::vector<Mac> watched;    // groups that its users want

    bool operator==(const UniViewers &) const = default;
};

// Of each of the ONU's UNI ports.
std::vector<UniViewers> viewers_of(uint64_t seed, const Mac &mac, const Device &device);

// What a UNI port that snoops would join in its VLANs: the channels are spread over them.
std::vector<McGroup> wanted_groups(uint32_t uni, const UniViewers &viewers, std::span<const uint32_t> vlans);

} // namespace ponsim
