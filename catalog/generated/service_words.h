// generated from the catalogue by catalog/generate.py; change the catalogue, not this file.
// clang-format off
#pragma once

#include <cstdint>

// Status words of the simulated PON service.
inline constexpr uint32_t PON_ERR_UNKNOWN_COMMAND = 4001; // the service has no such command on this channel
inline constexpr uint32_t PON_ERR_BAD_RECORD = 4002; // the record's length or contents make no sense for the command
inline constexpr uint32_t PON_ERR_NO_PORT = 4003; // the OLT has no such PON port
inline constexpr uint32_t PON_ERR_BAD_ONU_ID = 4004; // the ONU id is not one of 0 to 127
inline constexpr uint32_t PON_ERR_NOT_BOUND = 4005; // no ONU is bound to this id or by this MAC address
inline constexpr uint32_t PON_ERR_ID_IN_USE = 4006; // another ONU is bound to this id
inline constexpr uint32_t PON_ERR_ALREADY_BOUND = 4007; // the ONU is bound to another id or port; release it first
inline constexpr uint32_t PON_ERR_PORT_FULL = 4008; // all 128 ids of the port are in use
inline constexpr uint32_t PON_ERR_UNSUPPORTED = 4009; // the ONU is marked as not supported
inline constexpr uint32_t PON_ERR_MISMATCH = 4010; // the id and the MAC address name two different ONUs
inline constexpr uint32_t PON_ERR_BAD_MAC = 4011; // not the MAC address of a station: all zero, or a group address
inline constexpr uint32_t PON_ERR_STORE = 4012; // the service could not store the change; nothing was changed
inline constexpr uint32_t PON_ERR_OFFLINE = 4013; // an ONU that the command needs is offline; nothing was changed
inline constexpr uint32_t PON_ERR_TABLE_FULL = 4014; // the service's table for this has no room left
inline constexpr uint32_t PON_ERR_NOT_LISTED = 4015; // not on the black list, or no such authentication record
inline constexpr uint32_t PON_ERR_BLACKLISTED = 4016; // the ONU is on the black list of the port; take it off first
inline constexpr uint32_t PON_ERR_NOT_WAITING = 4017; // no ONU with this MAC address waits at the port: it has not arrived, or is not ranged

// Offsets of the fields that the service gives to opaque parts of a record.

namespace layout::onu_batch
{
inline constexpr uint32_t onu_set = 432; // idset: the ONU ids, 128 bits: id w*32+b is bit b of word w
} // namespace layout::onu_batch

namespace layout::opt_range
{
inline constexpr uint32_t min_distance = 432; // u32: nearest ONU that is ranged, at most max_distance
inline constexpr uint32_t max_distance = 436; // u32: farthest ONU that is ranged, at most 20000
} // namespace layout::opt_range

namespace layout::vlan_view
{
inline constexpr uint32_t scope = 352; // u32: 0 all PON ports or the whole PON port, 1 the ONU `onu_onu_id` of the PON port
} // namespace layout::vlan_view
