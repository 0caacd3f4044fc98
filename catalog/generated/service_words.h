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
inline constexpr uint32_t PON_ERR_BAD_SLA = 4050; // fixed and assured bandwidth exceed the maximum, the maximum is not 1 to 1000000 kbit/s, the priority not 0 to 7, or the weight not 1 to 100
inline constexpr uint32_t PON_ERR_SLA_CAPACITY = 4051; // the fixed and assured bandwidth of the port's ONUs would exceed its capacity
inline constexpr uint32_t PON_ERR_BAD_LLID = 4052; // the LLID is not one of 1 to 128, which are the ONU id and 1 more

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

namespace layout::sla
{
inline constexpr uint32_t fixed = 124; // u32: bandwidth that is granted whether used or not
inline constexpr uint32_t assured = 128; // u32: further bandwidth that is granted when asked for
inline constexpr uint32_t maximum = 132; // u32: bandwidth that is never exceeded, 1 to 1000000
inline constexpr uint32_t priority = 136; // u32: of what is left: 0 lowest to 7 highest
inline constexpr uint32_t weight = 140; // u32: share among those of one priority, 1 to 100
} // namespace layout::sla

namespace layout::sla_of_onu
{
inline constexpr uint32_t fixed = 124; // u32: bandwidth that is granted whether used or not
inline constexpr uint32_t assured = 128; // u32: further bandwidth that is granted when asked for
inline constexpr uint32_t maximum = 132; // u32: bandwidth that is never exceeded
inline constexpr uint32_t priority = 136; // u32: of what is left: 0 lowest to 7 highest
inline constexpr uint32_t weight = 140; // u32: share among those of one priority
} // namespace layout::sla_of_onu

namespace layout::sla_down
{
inline constexpr uint32_t maximum = 124; // u32: bandwidth that is never exceeded, at most 1000000; 0 takes the SLA away: the default holds again, which is 1000000
} // namespace layout::sla_down

namespace layout::sla_down_of_onu
{
inline constexpr uint32_t maximum = 124; // u32: bandwidth that is never exceeded: what was stored, or the default, which is 1000000
} // namespace layout::sla_down_of_onu

namespace layout::sla_of_port
{
inline constexpr uint32_t onus = 124; // u32: bound ONUs with a stored SLA
inline constexpr uint32_t fixed = 128; // u32: sum of their fixed bandwidth
inline constexpr uint32_t assured = 132; // u32: sum of their assured bandwidth
inline constexpr uint32_t capacity = 136; // u32: what the port has for both
inline constexpr uint32_t free = 140; // u32: what is left of it
} // namespace layout::sla_of_port

namespace layout::p2p_switch
{
inline constexpr uint32_t port = 96; // u32: PON port number, 0 all ports
inline constexpr uint32_t onu = 100; // u32: ONU id of a bound ONU, or 128: the switch of the port itself
inline constexpr uint32_t on = 116; // u32: 0 off, 1 on
} // namespace layout::p2p_switch

namespace layout::p2p_own_port
{
inline constexpr uint32_t own_port = 116; // u32: GE uplink, 1 to 4, that takes the frames of the PON port that P2P forwarding leaves; 0 any, as at first
} // namespace layout::p2p_own_port

namespace layout::p2p_of_port
{
inline constexpr uint32_t on = 100; // u32: the switch of the port: 0 off, 1 on
inline constexpr uint32_t rest = 108; // u32: what happens to frames between ONUs that no entry concerns: 0 dropped, 1 forwarded
inline constexpr uint32_t own_port = 116; // u32: GE uplink that takes what P2P forwarding leaves; 0 any
inline constexpr uint32_t rate = 124; // u32: of all frames between ONUs together; 0 not limited
inline constexpr uint32_t first_vlan = 128; // u16: first VLAN that is forwarded; 0 all of them
inline constexpr uint32_t last_vlan = 130; // u16: last one; 0 with first_vlan 0
inline constexpr uint32_t broadcast = 132; // u8: 1 where broadcast frames are forwarded, else 0
inline constexpr uint32_t multicast = 133; // u8: 1 where multicast frames are forwarded, else 0
inline constexpr uint32_t onu_set = 136; // idset: bound ONUs that the switch is on for, 128 bits: id w*32+b is bit b of word w
} // namespace layout::p2p_of_port

namespace layout::p2p_config
{
inline constexpr uint32_t rate = 124; // u32: of all frames between ONUs together, at most 1000000; 0 not limited
inline constexpr uint32_t first_vlan = 128; // u16: first VLAN that is forwarded, 1 to 4094; 0 all of them
inline constexpr uint32_t last_vlan = 130; // u16: last one, at least first_vlan; 0 with first_vlan 0
inline constexpr uint32_t broadcast = 132; // u8: 1 to forward broadcast frames, else 0
inline constexpr uint32_t multicast = 133; // u8: 1 to forward multicast frames, else 0
} // namespace layout::p2p_config

namespace layout::p2p_entry
{
inline constexpr uint32_t action = 124; // u16: 1 forward, 2 drop, 0 remove the entry
inline constexpr uint32_t from_onu = 126; // u16: ONU id that the frames come from, 128 any
inline constexpr uint32_t to_port = 128; // u16: PON port that they go to
inline constexpr uint32_t to_onu = 130; // u16: ONU id there, 128 any
inline constexpr uint32_t rate = 132; // u32: at most 1000000; 0 not limited
} // namespace layout::p2p_entry

namespace layout::llid_behavior
{
inline constexpr uint32_t mac_limit = 124; // u32: addresses that are learned at most; 0 not limited
inline constexpr uint32_t broadcast_rate = 128; // u32: of broadcast frames, at most 1000000; 0 not limited
inline constexpr uint32_t multicast_rate = 132; // u32: of multicast frames, at most 1000000; 0 not limited
inline constexpr uint32_t unknown_rate = 136; // u32: of frames to unknown addresses, at most 1000000; 0 not limited
inline constexpr uint32_t over_limit = 140; // u32: frames from addresses that mac_limit keeps from being learned: 0 forwarded, 1 dropped
inline constexpr uint32_t isolated = 144; // u32: 1 where P2P forwarding leaves the LLID out, else 0
} // namespace layout::llid_behavior

namespace layout::fdb_config
{
inline constexpr uint32_t ageing = 124; // u32: how long an address stays that is not heard of, 10 to 1000000; 0 for ever
inline constexpr uint32_t learning = 128; // u32: 1 on; 0 off: no address is learned, and none that is known is refreshed
inline constexpr uint32_t port_limit = 132; // u32: addresses that a PON port has at most, those that were learned first; 0 not limited
} // namespace layout::fdb_config

namespace layout::fdb_flush
{
inline constexpr uint32_t side = 124; // u16: 0 both, 1 the PON side, 2 the network side
inline constexpr uint32_t port = 126; // u16: PON port (side 1) or GE uplink (side 2); 0 all
inline constexpr uint32_t llid = 128; // u16: LLID of the PON port, 1 to 128; 0 all
inline constexpr uint32_t vlan = 130; // u16: VLAN; 0 all
inline constexpr uint32_t mac = 132; // mac: MAC address; zero all
} // namespace layout::fdb_flush

namespace layout::mac_query
{
inline constexpr uint32_t from = 124; // u32: how many of them to pass over
inline constexpr uint32_t count = 128; // u32: how many to show then, at most 100; 0 as many as there may be
inline constexpr uint32_t port = 132; // u32: PON port, or GE uplink of the network side; 0 all
inline constexpr uint32_t llid = 136; // u32: LLID of the PON port, 1 to 128; 0 all, and on the network side
inline constexpr uint32_t uni = 140; // u32: UNI port of the ONU; 0 all, and on the network side
inline constexpr uint32_t vlan = 144; // u32: VLAN; 0 all
inline constexpr uint32_t mac = 148; // mac: MAC address; zero all
} // namespace layout::mac_query

namespace layout::mac_count
{
inline constexpr uint32_t matching = 120; // u32: entries that the query matches, shown or not
} // namespace layout::mac_count

namespace layout::mac_ageing
{
inline constexpr uint32_t entries = 112; // u32: entries of both sides
inline constexpr uint32_t ageing = 120; // u32: how long an address stays that is not heard of; 0 for ever
} // namespace layout::mac_ageing

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
