// This file describes multicast at ONUs: what the users behind their UNI ports watch, and which groups the ports join.
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
inline constexpr uint32_t max_uni_mc_groups = 255; // the highest limit of groups that a UNI port can be set to

// An McGroup is a group that a UNI port joins, in a multicast VLAN.
struct McGroup {
    uint32_t uni;
    uint32_t vlan;
    Mac mac;

    bool operator==(const McGroup &) const = default;
};

// Returns whether a kind of ONU does IGMP/MLD snooping or controllable multicast.
bool knows_multicast(const DeviceType &type);

// Returns whether frames can have a tag with this VLAN.
bool is_vlan(uint32_t vlan);
// Returns whether the MAC address is that of a multicast group of IPv4 or IPv6.
bool is_group(const Mac &mac);

// UniViewers say which multicast VLANs a UNI port has until it is configured otherwise, and what its users watch.
struct UniViewers {
    std::vector<uint32_t> vlans; // the multicast VLANs
    std::vector<Mac> watched;    // groups that its users want

    bool operator==(const UniViewers &) const = default;
};

// Returns the viewers of each of the ONU's UNI ports.
std::vector<UniViewers> viewers_of(uint64_t seed, const Mac &mac, const Device &device);

// Returns the groups that a UNI port that snoops would join in its VLANs. The channels are spread over the VLANs.
std::vector<McGroup> wanted_groups(uint32_t uni, const UniViewers &viewers, std::span<const uint32_t> vlans);

} // namespace ponsim
