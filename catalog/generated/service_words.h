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

namespace layout::auth_record
{
inline constexpr uint32_t remove = 432; // u32: 1 removes the record of the LOID, else 0
} // namespace layout::auth_record

namespace layout::auth_counts
{
inline constexpr uint32_t records = 432; // u32: authentication records
inline constexpr uint32_t admitted = 436; // u32: bound ONUs that are online
inline constexpr uint32_t unauthenticated = 440; // u32: bound ONUs that are turned away for their LOID
inline constexpr uint32_t waiting = 444; // u32: ONUs that wait to be bound
inline constexpr uint32_t rejected = 448; // u32: ONUs on the fibre that are on the black list
} // namespace layout::auth_counts

namespace layout::onu_confirm
{
inline constexpr uint32_t by_mode = 16; // u8: 0: the port's authentication does not concern the ONU while it is bound; 1: it does, so that a LOID mode may still turn it away
} // namespace layout::onu_confirm

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

namespace layout::blacklist_text
{
inline constexpr uint32_t text = 429; // text: free text of the entry, at most 200 bytes of UTF-8
} // namespace layout::blacklist_text

namespace layout::blacklist_batch
{
inline constexpr uint32_t id_set = 432; // idset: the ids on the black list, 128 bits: id w*32+b is bit b of word w
} // namespace layout::blacklist_batch

namespace layout::id_usage
{
inline constexpr uint32_t id_set = 432; // idset: the ids in use, 128 bits: id w*32+b is bit b of word w
inline constexpr uint32_t count = 448; // u32: how many they are
} // namespace layout::id_usage

namespace layout::whitelist_entry
{
inline constexpr uint32_t state = 432; // u32: 0 offline, 1 online, 2 unauthenticated
inline constexpr uint32_t distance = 436; // u32: distance that ranging found; 0 while the ONU is offline
inline constexpr uint32_t authenticated = 440; // u32: 1 where the ONU is on the fibre and let in, else 0
inline constexpr uint32_t exempt = 444; // u32: 1 where it was confirmed, so that the port's authentication does not concern it, else 0
inline constexpr uint32_t supported = 448; // u32: 1 where the ONU is supported, else 0
inline constexpr uint32_t reboots = 452; // u32: how often the ONU was rebooted by command
inline constexpr uint32_t description = 456; // text: the description
inline constexpr uint32_t loid = 584; // text: the LOID that the ONU tells; empty while it is offline
} // namespace layout::whitelist_entry
