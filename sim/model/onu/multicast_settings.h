// These are the blocks that configure multicast at an ONU and at its UNI ports. Each is checked here as far as it does
// not matter which ONU it is for. Lists of VLANs and of groups are changed bit by bit, and kept as a whole.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "model/olt/remote.h"
#include "model/plant/onu_multicast.h"

namespace ponsim
{

inline constexpr uint32_t fast_leave_size = 4;
inline constexpr uint32_t mc_mode_size = 1;
inline constexpr uint32_t group_max_size = 2;
inline constexpr uint32_t mc_tags_size = 34;
inline constexpr uint32_t mc_vlans_size = 16;
inline constexpr uint32_t mc_groups_size = 1284;

// An McOperation says what is done to the lists of VLANs and groups, and what their answers contain.
enum McOperation : uint8_t { mc_remove = 0, mc_add = 1, mc_clear = 2, mc_list = 3 };

// What becomes of the tags of multicast frames at a UNI port.
enum class McTags : uint8_t { keep, strip, translate };

inline constexpr uint8_t by_mac_and_vlan = 1; // how groups are distinguished

template <class Value>
bool has(const std::vector<Value> &values, const Value &value)
{
    return std::ranges::find(values, value) != values.end();
}

// Returns whether there can be such a group at some UNI port.
bool is_good(const McGroup &group);

McTags tags_of(const OnuBlock &block);
// Returns the VLANs that are translated. There must be no more than max_mc_translations of them.
std::vector<Vlan> translations_of(const OnuBlock &block);

// The list of VLANs is kept in the form in which the OLT's side answers it.
OnuBlock block_of(const std::vector<uint32_t> &vlans);
std::vector<uint32_t> vlans_of(const OnuBlock &block);

// The list of groups of controllable multicast is kept in the form in which it is answered. There must be no more than
// max_mc_groups of them.
OnuBlock block_of(const std::vector<McGroup> &groups);
std::vector<McGroup> groups_of(const OnuBlock &block);

// These return whether there can be such a block. A list that is kept holds nothing twice.
bool is_good_fast_leave(const OnuBlock &block);
bool is_good_mc_mode(const OnuBlock &block);
bool is_good_group_max(const OnuBlock &block);
bool is_good_tags(const OnuBlock &block);
bool is_good_vlans(const OnuBlock &block);
bool is_good_groups(const OnuBlock &block);

} // namespace ponsim
