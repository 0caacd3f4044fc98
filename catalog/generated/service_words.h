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
inline constexpr uint32_t PON_ERR_NO_MEASUREMENT = 4030; // the power of this ONU was not measured, or that of another was measured since
inline constexpr uint32_t PON_ERR_MEASURING = 4031; // a power measurement is under way at the port; cancel it first
inline constexpr uint32_t PON_ERR_NO_CAGE = 4032; // the OLT has no such SFP cage
inline constexpr uint32_t PON_ERR_NO_DEVICE = 4033; // nothing answers at this address of the I2C bus
inline constexpr uint32_t PON_ERR_READ_ONLY = 4034; // some of these bytes of the module's memory cannot be written; none was
inline constexpr uint32_t PON_ERR_NO_UPGRADE_TYPE = 4060; // there is no upgrade type of this name, or none is bound to the ONU or its port
inline constexpr uint32_t PON_ERR_UPGRADE_TYPE_IN_USE = 4061; // an upgrade run that is under way uses the upgrade type; nothing was changed
inline constexpr uint32_t PON_ERR_WRONG_UPGRADE_TYPE = 4062; // the upgrade type is for another vendor or model than the ONU's
inline constexpr uint32_t PON_ERR_UP_TO_DATE = 4063; // the ONU has the version of its upgrade type already
inline constexpr uint32_t PON_ERR_UPGRADING = 4064; // an upgrade run of this ONU is under way
inline constexpr uint32_t PON_ERR_NOTHING_TO_UPGRADE = 4065; // none of the ONUs of the port can be upgraded: each is offline, without a type that fits, up to date or under way
inline constexpr uint32_t PON_ERR_NO_FILE = 4066; // the service cannot read the file; its log says why
inline constexpr uint32_t PON_ERR_NOT_ARRIVED = 4020; // no ONU with this MAC address has arrived at the port
inline constexpr uint32_t PON_ERR_NO_UNI = 4021; // the ONU has no such UNI port
inline constexpr uint32_t PON_ERR_TOO_LARGE = 4040; // the table is longer than a result can be; ask for less of it, one PON port for example
inline constexpr uint32_t PON_ERR_NO_INTERFACE = 4041; // the board has no such GE port (1 to 4), XAUI interface (1 and 2) or management port (1)
inline constexpr uint32_t PON_ERR_NOT_ABLE = 4070; // this kind of ONU is not able to do it
inline constexpr uint32_t PON_ERR_BAD_IMAGE = 4071; // the part does not go on where the image has got to, or the image is not what was announced
inline constexpr uint32_t PON_ERR_NO_IMAGE = 4072; // the ONU has no complete image to commit or to start
inline constexpr uint32_t PON_ERR_NOT_MONITORED = 4073; // the ONU does not monitor performance, or did not yet in the period before

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

namespace layout::port_stats
{
inline constexpr uint32_t in_octets = 124; // u64: received, of frames without errors (ifHCInOctets)
inline constexpr uint32_t in_unicast = 132; // u64: received without errors, to one station (ifHCInUcastPkts)
inline constexpr uint32_t in_multicast = 140; // u64: received without errors, to groups (ifHCInMulticastPkts, aMulticastFramesReceivedOK)
inline constexpr uint32_t in_broadcast = 148; // u64: received without errors, to all (ifHCInBroadcastPkts, aBroadcastFramesReceivedOK)
inline constexpr uint32_t in_fcs_errors = 156; // u64: dropped for a wrong frame check sequence (aFrameCheckSequenceErrors)
inline constexpr uint32_t in_code_errors = 164; // u64: dropped for a wrong CRC-8 in the preamble, of a PON port (aOMPEmulationCRC8Errors), or for a wrong symbol, of a GE port (aSymbolErrorDuringCarrier)
inline constexpr uint32_t in_discards = 172; // u64: received without errors, and dropped by policing (ifInDiscards)
inline constexpr uint32_t in_discard_octets = 180; // u64: of in_discards
inline constexpr uint32_t out_octets = 188; // u64: sent (ifHCOutOctets)
inline constexpr uint32_t out_unicast = 196; // u64: sent to one station (ifHCOutUcastPkts)
inline constexpr uint32_t out_multicast = 204; // u64: sent to groups (ifHCOutMulticastPkts, aMulticastFramesXmittedOK)
inline constexpr uint32_t out_broadcast = 212; // u64: sent to all (ifHCOutBroadcastPkts, aBroadcastFramesXmittedOK)
inline constexpr uint32_t out_discards = 220; // u64: not sent, for want of room or of a link (ifOutDiscards)
inline constexpr uint32_t out_discard_octets = 228; // u64: of out_discards
inline constexpr uint32_t frames_64 = 236; // u64: received without errors or sent, of 64 octets (etherStatsPkts64Octets)
inline constexpr uint32_t frames_65_127 = 244; // u64: of 65 to 127 octets (etherStatsPkts65to127Octets)
inline constexpr uint32_t frames_128_255 = 252; // u64: of 128 to 255 octets (etherStatsPkts128to255Octets)
inline constexpr uint32_t frames_256_511 = 260; // u64: of 256 to 511 octets (etherStatsPkts256to511Octets)
inline constexpr uint32_t frames_512_1023 = 268; // u64: of 512 to 1023 octets (etherStatsPkts512to1023Octets)
inline constexpr uint32_t frames_1024_1518 = 276; // u64: of 1024 to 1518 octets (etherStatsPkts1024to1518Octets)
} // namespace layout::port_stats

namespace layout::ge_phy
{
inline constexpr uint32_t control = 124; // u16: register 0: bit 14 loopback, 13 and 6 speed (01: 1000 Mbit/s), 12 auto-negotiation, 11 power down, 10 isolate, 8 full duplex
inline constexpr uint32_t status = 126; // u16: register 1: bit 8 extended status, 6 preamble suppression, 5 auto-negotiation complete, 3 able to auto-negotiate, 2 link up, 0 extended registers
inline constexpr uint32_t phy_id_high = 128; // u16: register 2: the PHY's identifier, bits 3 to 18 of its OUI
inline constexpr uint32_t phy_id_low = 130; // u16: register 3: bits 19 to 24 of the OUI, model, revision
inline constexpr uint32_t advertised = 132; // u16: register 4: bit 5 full duplex, 6 half duplex, 7 pause, 8 asymmetric pause
inline constexpr uint32_t partner = 134; // u16: register 5: what the other end advertises, in the same bits, 14 acknowledged; 0 until auto-negotiation is complete
inline constexpr uint32_t expansion = 136; // u16: register 6: bit 1 page received, 2 able to exchange next pages
inline constexpr uint32_t next_page = 138; // u16: register 7: next page to send; bit 13 message page
inline constexpr uint32_t partner_page = 140; // u16: register 8: next page of the other end
inline constexpr uint32_t extended_status = 142; // u16: register 15: bit 15 1000BASE-X full duplex, 14 1000BASE-X half duplex
} // namespace layout::ge_phy

namespace layout::ge_phy_control
{
inline constexpr uint32_t control = 124; // u8: the upper byte of the control register: bit 7 reset (to auto-negotiation and full duplex, whatever the others), 6 loopback, 5 is refused (100 Mbit/s), 4 auto-negotiation, 3 power down, 2 isolate, 1 restart auto-negotiation (done at once), 0 full duplex
} // namespace layout::ge_phy_control

namespace layout::behavior_view
{
inline constexpr uint32_t selector = 120; // u32: 0 the PON port, 1 the GE port (1 to 4)
} // namespace layout::behavior_view

namespace layout::ingress
{
inline constexpr uint32_t vlan_mode = 124; // u8: 0: tags pass unchanged
inline constexpr uint32_t acceptable = 125; // u8: frames that are let in: 0 all, 1 tagged only, 2 untagged only
inline constexpr uint32_t vlan_filter = 126; // u8: 1 where frames of VLANs that the port is no member of are dropped
inline constexpr uint32_t default_priority = 127; // u8: 802.1p priority of untagged frames
inline constexpr uint32_t pvid = 128; // u16: VLAN of untagged frames
inline constexpr uint32_t tpid = 130; // u16: type that a tag is known by
inline constexpr uint32_t max_frame = 132; // u16: longest frame that is let in
inline constexpr uint32_t trust = 134; // u8: what the queue follows from: 0 the port, 1 the 802.1p priority, 2 the DSCP
inline constexpr uint32_t learning = 135; // u8: 1 where source addresses are learnt
inline constexpr uint32_t committed_rate = 136; // u32: rate limit of policing
inline constexpr uint32_t committed_burst = 140; // u32: how much may come at once beyond it
inline constexpr uint32_t peak_rate = 144; // u32: rate beyond which all is dropped
inline constexpr uint32_t peak_burst = 148; // u32: how much may come at once beyond that
inline constexpr uint32_t broadcast_limit = 152; // u32: storm control of broadcast frames
inline constexpr uint32_t multicast_limit = 156; // u32: storm control of multicast frames
inline constexpr uint32_t unknown_limit = 160; // u32: storm control of unicast frames to unknown addresses
inline constexpr uint32_t policed_share = 164; // u32: of the frames received without errors, those that policing drops
inline constexpr uint32_t queue_of = 168; // bytes: queue of the 802.1p priorities 0 to 7
inline constexpr uint32_t queues = 176; // u8: number of queues
inline constexpr uint32_t policing = 177; // u8: 1 where policing is on
} // namespace layout::ingress

namespace layout::egress
{
inline constexpr uint32_t tagging = 124; // u8: 0: frames leave as they are
inline constexpr uint32_t scheduler = 125; // u8: 0 strict priority, 1 weighted round robin
inline constexpr uint32_t discard_share = 126; // u16: of the frames to be sent, those that find no room in their queue
inline constexpr uint32_t shaping_rate = 128; // u32: rate limit
} // namespace layout::egress

namespace layout::pon_mac
{
inline constexpr uint32_t registered = 124; // u32: bound ONUs that are online
inline constexpr uint32_t discovery_interval = 128; // u32: from one discovery window to the next
inline constexpr uint32_t discovery_window = 132; // u32: its length
inline constexpr uint32_t report_timeout = 136; // u32: without a REPORT, after which an ONU is deregistered
inline constexpr uint32_t gate_timeout = 140; // u32: without a GATE, after which an ONU sends no more
inline constexpr uint32_t grant_length = 144; // u32: grant of an ONU with full queues
inline constexpr uint32_t grant_cycle = 148; // u32: from one grant of an ONU to the next
inline constexpr uint32_t sync_time = 152; // u16: that the receiver needs at a grant's start
inline constexpr uint32_t laser_on = 154; // u16: that an ONU's laser needs to come on
inline constexpr uint32_t laser_off = 156; // u16: that it needs to go off
inline constexpr uint32_t fec = 158; // u8: 1 with forward error correction
inline constexpr uint32_t uplink = 159; // u8: GE port that the traffic goes through
} // namespace layout::pon_mac

namespace layout::mpcp
{
inline constexpr uint32_t discovery_interval = 124; // u32: 1: from one discovery window to the next, 100 to 10000; at first 1000
inline constexpr uint32_t discovery_window = 128; // u32: 1: its length, 12500 (the round trip of 20 km) to 65535; at first 16384
inline constexpr uint32_t report_timeout = 132; // u32: 2: without a REPORT, after which an ONU is deregistered, 50 to 10000; at first 1000
inline constexpr uint32_t gate_timeout = 136; // u32: 2: without a GATE, after which an ONU sends no more, 10 to 1000; at first 50
inline constexpr uint32_t grant_length = 140; // u32: 3: grant of an ONU with full queues, 64 to 65535; at first 2048
inline constexpr uint32_t grant_cycle = 144; // u32: 3: from one grant of an ONU to the next, 250 to 10000; at first 1000
inline constexpr uint32_t sync_time = 148; // u32: 3: that the receiver needs at a grant's start, from 1, less than grant_length; at first 64
inline constexpr uint32_t fec = 152; // u32: 3: 1 with forward error correction, else 0; at first 0
} // namespace layout::mpcp

namespace layout::ge_mac
{
inline constexpr uint32_t mac = 124; // mac: its address
inline constexpr uint32_t max_frame = 130; // u16: longest frame
inline constexpr uint32_t speed = 132; // u16: 0 while the link is down
inline constexpr uint32_t full_duplex = 134; // u8: 1 while the link is up: it is full duplex
inline constexpr uint32_t link = 135; // u8: 1 while the link is up
inline constexpr uint32_t tx_enabled = 136; // u8: 1 where it may send
inline constexpr uint32_t rx_enabled = 137; // u8: 1 where it may receive
inline constexpr uint32_t pause_tx = 138; // u8: 1 where it may send PAUSE
inline constexpr uint32_t pause_rx = 139; // u8: 1 where it obeys PAUSE
inline constexpr uint32_t pause_quanta = 140; // u16: what it asks for in a PAUSE, in 512 bit times
inline constexpr uint32_t inter_frame_gap = 142; // u16: between frames that it sends
inline constexpr uint32_t loopback = 144; // u8: 1 while the PHY is in loopback
inline constexpr uint32_t promiscuous = 145; // u8: 1: it takes frames to any address
} // namespace layout::ge_mac

namespace layout::xaui_mac
{
inline constexpr uint32_t mac = 124; // mac: its address
inline constexpr uint32_t max_frame = 130; // u16: longest frame
inline constexpr uint32_t speed = 132; // u32: always 10000
inline constexpr uint32_t full_duplex = 136; // u8: always 1
inline constexpr uint32_t link = 137; // u8: 1 while its lanes are aligned
inline constexpr uint32_t pause_tx = 138; // u8: 1 where it may send PAUSE
inline constexpr uint32_t pause_rx = 139; // u8: 1 where it obeys PAUSE
inline constexpr uint32_t local_fault = 140; // u8: 1 while it sees no signal
inline constexpr uint32_t remote_fault = 141; // u8: 1 while the other end sees none
inline constexpr uint32_t pause_quanta = 142; // u16: what it asks for in a PAUSE, in 512 bit times
inline constexpr uint32_t in_load = 144; // u32: offered by the network for the ONUs, now
inline constexpr uint32_t out_load = 148; // u32: offered by the ONUs for the network, now
} // namespace layout::xaui_mac

namespace layout::xaui_phy
{
inline constexpr uint32_t control = 124; // u16: register 0: bits 13 and 6 speed (11: 10 Gbit/s), 14 loopback, 11 low power
inline constexpr uint32_t status = 126; // u16: register 1: bit 2 link up, 1 able to save power, 7 fault
inline constexpr uint32_t speed = 128; // u16: register 4: bit 0 able to do 10 Gbit/s
inline constexpr uint32_t status_2 = 130; // u16: register 8: bits 15 and 14 present (10), 11 transmit fault, 10 receive fault
inline constexpr uint32_t lane_status = 132; // u16: register 24: bit 12 lanes aligned, 11 able to send test patterns, 3 to 0 lanes synchronised
inline constexpr uint32_t test = 134; // u16: register 25: bit 2 test pattern on, 1 and 0 which
} // namespace layout::xaui_phy

namespace layout::mgmt_cfg
{
inline constexpr uint32_t enabled = 124; // u8: 1 where it is enabled
inline constexpr uint32_t full_duplex = 125; // u8: 1 with full duplex
inline constexpr uint32_t speed = 126; // u16: its speed
} // namespace layout::mgmt_cfg

namespace layout::fdb_dump
{
inline constexpr uint32_t selector = 120; // u32: 0 all entries, 1 dynamic ones, 2 static ones
} // namespace layout::fdb_dump

namespace layout::debug_switch
{
inline constexpr uint32_t on = 116; // u32: 1 on, 0 off
inline constexpr uint32_t pon_port = 120; // u32: PON port, 0 for all
} // namespace layout::debug_switch

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
inline constexpr uint32_t reboots = 452; // u32: how often the ONU was rebooted by command, or after an upgrade
inline constexpr uint32_t description = 456; // text: the description
inline constexpr uint32_t loid = 584; // text: the LOID that the ONU tells; empty while it is offline
} // namespace layout::whitelist_entry

namespace layout::loop_config
{
inline constexpr uint32_t state = 20; // u32: 1 while loops are detected, else 0
inline constexpr uint32_t mode = 24; // u32: how ports recover: 0 automatically after the recovery time, 1 by command only
inline constexpr uint32_t time = 28; // u32: recovery time, 10 to 86400
inline constexpr uint32_t interval = 32; // u32: interval between detection packets, 1 to 600
inline constexpr uint32_t shut = 36; // u32: how many UNI ports are shut now
inline constexpr uint32_t detected = 40; // u32: how many loops were detected so far; one that is there again after a recovery counts again
inline constexpr uint32_t recovered = 44; // u32: how many recoveries there were so far
inline constexpr uint32_t reserved = 48; // bytes: zero
} // namespace layout::loop_config

namespace layout::onu_switch
{
inline constexpr uint32_t on = 352; // u8: 1 on, 0 off
} // namespace layout::onu_switch

namespace layout::onu_catv_state
{
inline constexpr uint32_t on = 352; // u8: 1 on, 0 off
} // namespace layout::onu_catv_state

namespace layout::onu_perf_monitor
{
inline constexpr uint32_t state = 352; // u16: 1 on, 0 off
inline constexpr uint32_t period = 356; // u32: how long a period is: 900; the first begins when monitoring does
inline constexpr uint32_t since = 360; // u64: model time at which monitoring began; 0 while it is off
} // namespace layout::onu_perf_monitor

namespace layout::onu_performance
{
inline constexpr uint32_t down_drop_events = 352; // u64: downstream drop events: each discarded frame is one
inline constexpr uint32_t up_drop_events = 360; // u64: upstream drop events: each discarded frame is one
inline constexpr uint32_t down_octets = 368; // u64: downstream octets of frames, with their check sequence
inline constexpr uint32_t up_octets = 376; // u64: upstream octets of frames, with their check sequence
inline constexpr uint32_t down_frames = 384; // u64: downstream frames that passed well: the sum of those of each length
inline constexpr uint32_t up_frames = 392; // u64: upstream frames that passed well: the sum of those of each length
inline constexpr uint32_t down_broadcast = 400; // u64: downstream broadcast frames among them
inline constexpr uint32_t up_broadcast = 408; // u64: upstream broadcast frames among them
inline constexpr uint32_t down_multicast = 416; // u64: downstream multicast frames among them
inline constexpr uint32_t up_multicast = 424; // u64: upstream multicast frames among them
inline constexpr uint32_t down_crc_errored = 432; // u64: downstream frames with a wrong check sequence
inline constexpr uint32_t up_crc_errored = 440; // u64: upstream frames with a wrong check sequence
inline constexpr uint32_t down_undersize = 448; // u64: downstream frames below 64 octets: not modelled, 0
inline constexpr uint32_t up_undersize = 456; // u64: upstream frames below 64 octets: not modelled, 0
inline constexpr uint32_t down_oversize = 464; // u64: downstream frames above 1518 octets: not modelled, 0
inline constexpr uint32_t up_oversize = 472; // u64: upstream frames above 1518 octets: not modelled, 0
inline constexpr uint32_t down_fragments = 480; // u64: downstream broken frames below 64 octets, which collisions leave on a half-duplex link
inline constexpr uint32_t up_fragments = 488; // u64: upstream broken frames below 64 octets, which collisions leave on a half-duplex link
inline constexpr uint32_t down_jabbers = 496; // u64: downstream broken frames above 1518 octets: not modelled, 0
inline constexpr uint32_t up_jabbers = 504; // u64: upstream broken frames above 1518 octets: not modelled, 0
inline constexpr uint32_t down_octets_64 = 512; // u64: downstream frames of 64 octets
inline constexpr uint32_t up_octets_64 = 520; // u64: upstream frames of 64 octets
inline constexpr uint32_t down_octets_65_127 = 528; // u64: downstream frames of 65 to 127 octets
inline constexpr uint32_t up_octets_65_127 = 536; // u64: upstream frames of 65 to 127 octets
inline constexpr uint32_t down_octets_128_255 = 544; // u64: downstream frames of 128 to 255 octets
inline constexpr uint32_t up_octets_128_255 = 552; // u64: upstream frames of 128 to 255 octets
inline constexpr uint32_t down_octets_256_511 = 560; // u64: downstream frames of 256 to 511 octets
inline constexpr uint32_t up_octets_256_511 = 568; // u64: upstream frames of 256 to 511 octets
inline constexpr uint32_t down_octets_512_1023 = 576; // u64: downstream frames of 512 to 1023 octets
inline constexpr uint32_t up_octets_512_1023 = 584; // u64: upstream frames of 512 to 1023 octets
inline constexpr uint32_t down_octets_1024_1518 = 592; // u64: downstream frames of 1024 to 1518 octets
inline constexpr uint32_t up_octets_1024_1518 = 600; // u64: upstream frames of 1024 to 1518 octets
inline constexpr uint32_t down_discarded = 608; // u64: downstream frames that were not sent for want of room
inline constexpr uint32_t up_discarded = 616; // u64: upstream frames that were not sent for want of room
inline constexpr uint32_t down_errored = 624; // u64: downstream frames with errors: with a wrong check sequence, undersize, oversize, fragments and jabbers
inline constexpr uint32_t up_errored = 632; // u64: upstream frames with errors: with a wrong check sequence, undersize, oversize, fragments and jabbers
inline constexpr uint32_t status_changes = 640; // u64: changes of the link's state: not modelled, 0
} // namespace layout::onu_performance

namespace layout::optics_diagnostics
{
inline constexpr uint32_t temperature = 124; // s32: temperature
inline constexpr uint32_t voltage = 128; // u32: supply voltage
inline constexpr uint32_t bias = 132; // u32: bias of the laser
inline constexpr uint32_t launch_power = 136; // s32: launch power; -40 while the laser is off
inline constexpr uint32_t received_power = 140; // s32: received power that was measured last; -40 where it found no light, and before the first measurement
inline constexpr uint32_t alarms = 144; // u16: alarm flags: from the highest bit on, high and low of temperature, voltage, bias, launch power, received power (this one only when it was measured)
inline constexpr uint32_t warnings = 146; // u16: warning flags, likewise
inline constexpr uint32_t laser = 148; // u8: 1 while the laser is on
inline constexpr uint32_t tx_fault = 149; // u8: 1 while the bias is above its alarm threshold
inline constexpr uint32_t rx_los = 150; // u8: 1 where the received power is below the LOL level
inline constexpr uint32_t measuring = 151; // u8: 1 while a power measurement is under way
inline constexpr uint32_t lao_mode = 152; // u8: LAO mode: 1 where the laser stays on in spite of TX disable
inline constexpr uint32_t lol_mode = 153; // u8: LOL mode: 1 where the LOL level was set, 0 where it is the low alarm threshold of received power
inline constexpr uint32_t measured_onu = 154; // u16: id of the ONU that was measured last; 65535 before the first measurement, and where it is bound here no more
inline constexpr uint32_t age = 156; // u32: age of the laser
inline constexpr uint32_t bias_high_warning = 160; // u32: warning threshold of a bias too high
inline constexpr uint32_t bias_high_alarm = 164; // u32: its alarm threshold
inline constexpr uint32_t launch_low_warning = 168; // s32: warning threshold of a launch power too low
inline constexpr uint32_t launch_low_alarm = 172; // s32: its alarm threshold
inline constexpr uint32_t lol_level = 176; // s32: LOL level: received power below it counts as loss of light
} // namespace layout::optics_diagnostics

namespace layout::optics_rssi
{
inline constexpr uint32_t mac = 124; // mac: MAC address of the ONU
inline constexpr uint32_t onu_id = 130; // u8: its id
inline constexpr uint32_t light = 131; // u8: 1 where the received power reaches the LOL level
inline constexpr uint32_t received_power = 132; // s32: received power; of a measurement the average
inline constexpr uint32_t onu_launch_power = 136; // s32: what the ONU launches now; -40 while it is offline
inline constexpr uint32_t loss = 140; // s32: what is lost between it and the port: splitter, fibre and connectors
inline constexpr uint32_t distance = 144; // u32: distance of the ONU; 0 while it is offline
inline constexpr uint32_t samples = 148; // u32: of how many samples the received power is the average
inline constexpr uint32_t least = 152; // s32: the weakest of them
inline constexpr uint32_t greatest = 156; // s32: the strongest
inline constexpr uint32_t time = 160; // u64: model time of the last of them
inline constexpr uint32_t temperature = 168; // s32: temperature of the module
inline constexpr uint32_t voltage = 172; // u32: its supply voltage
inline constexpr uint32_t bias = 176; // u32: bias of its laser
inline constexpr uint32_t launch_power = 180; // s32: its launch power; -40 while the laser is off
inline constexpr uint32_t state = 184; // u32: of the received power: 0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm
} // namespace layout::optics_rssi

namespace layout::sfp_info
{
inline constexpr uint32_t cage = 124; // u32: SFP cage number
inline constexpr uint32_t pon_port = 128; // u32: PON port of the module; 0 of an uplink
inline constexpr uint32_t vendor = 132; // text: vendor name
inline constexpr uint32_t part = 152; // text: part number
inline constexpr uint32_t revision = 172; // text: revision
inline constexpr uint32_t serial = 180; // text: serial number
inline constexpr uint32_t date = 200; // text: date of manufacture, YYMMDD
inline constexpr uint32_t oui = 212; // bytes: OUI of the vendor
inline constexpr uint32_t connector = 215; // u8: connector, code of SFF-8472: 1 SC, 7 LC
inline constexpr uint32_t wavelength = 216; // u32: wavelength of the laser
inline constexpr uint32_t reach = 220; // u32: length of single-mode fibre, at most
inline constexpr uint32_t rate = 224; // u32: line rate
inline constexpr uint32_t age = 228; // u32: age of the laser
inline constexpr uint32_t laser = 232; // u8: 1 while the laser is on
inline constexpr uint32_t tx_fault = 233; // u8: 1 while the bias is above its alarm threshold
inline constexpr uint32_t rx_los = 234; // u8: 1 where the received power is below the LOL level
inline constexpr uint32_t measuring = 235; // u8: 1 while a power measurement is under way
inline constexpr uint32_t alarms = 236; // u16: alarm flags: from the highest bit on, high and low of temperature, voltage, bias, launch power, received power (of a PON port only when it was measured)
inline constexpr uint32_t warnings = 238; // u16: warning flags, likewise
inline constexpr uint32_t temperature = 240; // s32: temperature
inline constexpr uint32_t temperature_high_alarm = 244; // s32: high alarm threshold
inline constexpr uint32_t temperature_low_alarm = 248; // s32: low alarm threshold
inline constexpr uint32_t temperature_high_warning = 252; // s32: high warning threshold
inline constexpr uint32_t temperature_low_warning = 256; // s32: low warning threshold
inline constexpr uint32_t temperature_state = 260; // u32: 0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm
inline constexpr uint32_t voltage = 264; // u32: voltage
inline constexpr uint32_t voltage_high_alarm = 268; // u32: high alarm threshold
inline constexpr uint32_t voltage_low_alarm = 272; // u32: low alarm threshold
inline constexpr uint32_t voltage_high_warning = 276; // u32: high warning threshold
inline constexpr uint32_t voltage_low_warning = 280; // u32: low warning threshold
inline constexpr uint32_t voltage_state = 284; // u32: 0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm
inline constexpr uint32_t bias = 288; // u32: bias
inline constexpr uint32_t bias_high_alarm = 292; // u32: high alarm threshold
inline constexpr uint32_t bias_low_alarm = 296; // u32: low alarm threshold
inline constexpr uint32_t bias_high_warning = 300; // u32: high warning threshold
inline constexpr uint32_t bias_low_warning = 304; // u32: low warning threshold
inline constexpr uint32_t bias_state = 308; // u32: 0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm
inline constexpr uint32_t launch_power = 312; // s32: launch power
inline constexpr uint32_t launch_power_high_alarm = 316; // s32: high alarm threshold
inline constexpr uint32_t launch_power_low_alarm = 320; // s32: low alarm threshold
inline constexpr uint32_t launch_power_high_warning = 324; // s32: high warning threshold
inline constexpr uint32_t launch_power_low_warning = 328; // s32: low warning threshold
inline constexpr uint32_t launch_power_state = 332; // u32: 0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm
inline constexpr uint32_t received_power = 336; // s32: received power; of a PON port's module that of the ONU which was measured last
inline constexpr uint32_t received_power_high_alarm = 340; // s32: high alarm threshold
inline constexpr uint32_t received_power_low_alarm = 344; // s32: low alarm threshold
inline constexpr uint32_t received_power_high_warning = 348; // s32: high warning threshold
inline constexpr uint32_t received_power_low_warning = 352; // s32: low warning threshold
inline constexpr uint32_t received_power_state = 356; // u32: 0 within the thresholds, 1 low warning, 2 low alarm, 3 high warning, 4 high alarm
inline constexpr uint32_t identity_memory = 360; // bytes: the module's memory at A0h, bytes 0 to 95, as in SFF-8472
inline constexpr uint32_t diagnostic_memory = 456; // bytes: its memory at A2h, bytes 0 to 119
inline constexpr uint32_t lao_mode = 576; // u32: LAO mode: 1 where the laser stays on in spite of TX disable
inline constexpr uint32_t lol_mode = 580; // u32: LOL mode: 1 where the LOL level was set, 0 where it is the low alarm threshold of received power
inline constexpr uint32_t lol_level = 584; // s32: LOL level: received power below it counts as loss of light
} // namespace layout::sfp_info

namespace layout::opm_trigger
{
inline constexpr uint32_t samples = 124; // u32: how many samples to take, at most 100; 0 is 1
inline constexpr uint32_t interval = 128; // u32: time between two samples, at most 60000
inline constexpr uint32_t delay = 132; // u32: time before the first, at most 3600000
} // namespace layout::opm_trigger

namespace layout::lao_mode
{
inline constexpr uint32_t reserved = 124; // bytes: zero
} // namespace layout::lao_mode

namespace layout::lol_mode
{
inline constexpr uint32_t level = 124; // s32: the level of mode 1, -40 to 0; 0 in mode 0
inline constexpr uint32_t reserved = 128; // bytes: zero
} // namespace layout::lol_mode

namespace layout::optical_status
{
inline constexpr uint32_t valid = 124; // u8: 1; 0 makes the debug layer forget what it was told, and the rest does not count
inline constexpr uint32_t laser = 125; // u8: 1 where the laser is on, else 0
inline constexpr uint32_t tx_fault = 126; // u8: 1 where the transmitter has a fault, else 0
inline constexpr uint32_t rx_los = 127; // u8: 1 where light is lost, else 0
inline constexpr uint32_t temperature = 128; // s32: temperature
inline constexpr uint32_t voltage = 132; // u32: supply voltage
inline constexpr uint32_t bias = 136; // u32: bias of the laser
inline constexpr uint32_t launch_power = 140; // s32: launch power
inline constexpr uint32_t received_power = 144; // s32: received power
inline constexpr uint32_t time = 148; // u64: when it was measured
} // namespace layout::optical_status

namespace layout::pon_laser
{
inline constexpr uint32_t state = 124; // u32: 0 off by TX disable, 1 on, 2 on in spite of TX disable by LAO mode
} // namespace layout::pon_laser

namespace layout::pon_phy
{
inline constexpr uint32_t laser = 124; // u8: 1 while the laser is on
inline constexpr uint32_t tx_fault = 125; // u8: 1 while the bias is above its alarm threshold
inline constexpr uint32_t rx_los = 126; // u8: 1 where the received power is below the LOL level
inline constexpr uint32_t lao_mode = 127; // u8: LAO mode
inline constexpr uint32_t told = 128; // u8: 1 where the debug layer was told an optical status; else the next three are 0
inline constexpr uint32_t told_laser = 129; // u8: 1 where the laser is on
inline constexpr uint32_t told_tx_fault = 130; // u8: 1 where the transmitter has a fault
inline constexpr uint32_t told_rx_los = 131; // u8: 1 where light is lost
inline constexpr uint32_t rate = 132; // u16: line rate, each way
inline constexpr uint32_t wavelength = 134; // u16: wavelength of the laser
} // namespace layout::pon_phy

namespace layout::i2c_read
{
inline constexpr uint32_t address = 124; // u32: bus address, 0xa0 or 0xa2
inline constexpr uint32_t offset = 128; // u32: first byte of the memory
inline constexpr uint32_t length = 132; // u32: bytes, 1 to 128, not beyond byte 255 of the memory
inline constexpr uint32_t result = 136; // u32: not read
inline constexpr uint32_t data = 140; // bytes: not read
} // namespace layout::i2c_read

namespace layout::i2c_bytes
{
inline constexpr uint32_t address = 124; // u32: bus address, 0xa0 or 0xa2
inline constexpr uint32_t offset = 128; // u32: first byte of the memory
inline constexpr uint32_t length = 132; // u32: bytes, 1 to 128, not beyond byte 255 of the memory
inline constexpr uint32_t result = 136; // u32: bytes that were read; 0 where the status is not
inline constexpr uint32_t data = 140; // bytes: the bytes; behind them zero
} // namespace layout::i2c_bytes

namespace layout::i2c_write
{
inline constexpr uint32_t address = 124; // u32: bus address, 0xa0 or 0xa2
inline constexpr uint32_t offset = 128; // u32: first byte of the memory
inline constexpr uint32_t length = 132; // u32: bytes, 1 to 128, not beyond byte 255 of the memory
inline constexpr uint32_t result = 136; // u32: not read
inline constexpr uint32_t data = 140; // bytes: the bytes to write
} // namespace layout::i2c_write

namespace layout::upgrade_type
{
inline constexpr uint32_t name = 20; // text: name of the type
inline constexpr uint32_t vendor = 52; // text: vendor id of the ONUs that it is for
inline constexpr uint32_t model = 57; // text: their model
inline constexpr uint32_t version = 73; // text: software version that they get
inline constexpr uint32_t size = 92; // u32: size of the image, at least 1
inline constexpr uint32_t file = 96; // text: file name of the image; it is shown only, and may be empty
} // namespace layout::upgrade_type

namespace layout::upgrade_type_name
{
inline constexpr uint32_t name = 20; // text: name of the type
} // namespace layout::upgrade_type_name

namespace layout::upgrade_type_file
{
inline constexpr uint32_t file = 20; // text: absolute path of the file, where the service runs
} // namespace layout::upgrade_type_file

namespace layout::upgrade_bind_onus
{
inline constexpr uint32_t pon_port = 20; // u32: PON port number
inline constexpr uint32_t name = 24; // text: name of the type; empty: none is bound any more
inline constexpr uint32_t onu_set = 56; // idset: the ONU ids, 128 bits: id w*32+b is bit b of word w
} // namespace layout::upgrade_bind_onus

namespace layout::upgrade_bind_port
{
inline constexpr uint32_t pon_port = 20; // u32: PON port number
inline constexpr uint32_t name = 24; // text: name of the type; empty: none is bound any more
} // namespace layout::upgrade_bind_port

namespace layout::upgrade_onu
{
inline constexpr uint32_t pon_port = 20; // u32: PON port number
inline constexpr uint32_t onu_id = 24; // u32: ONU id
} // namespace layout::upgrade_onu

namespace layout::upgrade_port
{
inline constexpr uint32_t pon_port = 20; // u32: PON port number
} // namespace layout::upgrade_port
