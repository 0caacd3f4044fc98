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
inline constexpr uint32_t PON_ERR_ID_IN_USE = 4006; // another ONU is bound to this id, or another profile has this number
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
inline constexpr uint32_t PON_ERR_SNOOPING = 4080; // the ONU does IGMP/MLD snooping; switch it to controllable multicast first
inline constexpr uint32_t PON_ERR_NO_PROFILE = 4090; // there is no profile of this name
inline constexpr uint32_t PON_ERR_NO_UNI_PROFILE = 4092; // there is no UNI profile of this number; they are numbered from 1 to 32
inline constexpr uint32_t PON_ERR_BAD_CONFIG = 4095; // the configuration is wrong or not complete, and nothing was changed; the service's log says what is wrong
inline constexpr uint32_t PON_ERR_OTHER_OLT = 4096; // the configuration is that of an OLT with another seed, ports, arrivals or silent share; nothing was changed

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

namespace layout::all_onu_info
{
inline constexpr uint32_t text = 20; // text: the text, at most 1023 characters and a NUL
} // namespace layout::all_onu_info

namespace layout::onu_config_word
{
inline constexpr uint32_t word = 20; // u32: bits: 0 it has a management address; 1 FEC is enabled; 2 it has its time by SNTP; 3 an SLA is stored, upstream or downstream; 4 it has several LLIDs; 5 performance monitoring and CATV are on; 6 controllable multicast; 7 fast leave is on; and where it is so at any of its UNI ports: 8 disabled, 9 no auto-negotiation, 10 flow control, 11 a rate limit, 12 a VLAN mode other than transparent, 13 a classification rule, 14 no loop detection. All other bits are 0
} // namespace layout::onu_config_word

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

namespace layout::config_written
{
inline constexpr uint32_t size = 120; // u32: size of the file
inline constexpr uint32_t file = 124; // text: absolute path of the file, where the service runs
} // namespace layout::config_written

namespace layout::config_read
{
inline constexpr uint32_t size = 8; // u32: size of the file
inline constexpr uint32_t file = 24; // text: absolute path of the file, where the service runs
} // namespace layout::config_read

namespace layout::config_part
{
inline constexpr uint32_t offset = 24; // u32: where in the text the part begins: 0, or where the last one ended
inline constexpr uint32_t total = 28; // u32: size of the whole text, at most 67108864; the same in all of its parts
inline constexpr uint32_t length = 32; // u32: length of this part, 1 to 4080
inline constexpr uint32_t bytes = 36; // bytes: the bytes of the text, from the left
} // namespace layout::config_part

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

namespace layout::loid
{
inline constexpr uint32_t loid = 45; // text: LOID, 1 to 24 printable ASCII characters
inline constexpr uint32_t password = 109; // text: its password, at most 12 printable ASCII characters; may be empty
} // namespace layout::loid

namespace layout::loid_delete
{
inline constexpr uint32_t loid = 45; // text: LOID, 1 to 24 printable ASCII characters
} // namespace layout::loid_delete

namespace layout::oui
{
inline constexpr uint32_t oui = 429; // bytes: OUI in transmission order
} // namespace layout::oui

namespace layout::uni_profile
{
inline constexpr uint32_t admin = 429; // u8: 1 the port is on, 0 off
inline constexpr uint32_t autoneg = 430; // u8: 1 the port negotiates speed and duplex, 0 it takes those that it is configured to
inline constexpr uint32_t pause = 431; // u8: flow control: 1 on, 0 off
inline constexpr uint32_t up_cir = 432; // u32: upstream committed rate, 1 to 999999
inline constexpr uint32_t up_cbs = 436; // u32: upstream committed burst, 1522 to 16777215
inline constexpr uint32_t up_ebs = 440; // u32: upstream excess burst, at most 16777215
inline constexpr uint32_t down_cir = 444; // u32: downstream committed rate, at most down_pir
inline constexpr uint32_t down_pir = 448; // u32: downstream peak rate, which limits it, 1 to 999999
inline constexpr uint32_t up_on = 452; // u8: 1 where upstream is limited, else 0: then its values do not count
inline constexpr uint32_t down_on = 453; // u8: the same of downstream
inline constexpr uint32_t vlan_mode = 456; // u8: 0 transparent, 1 tag, 2 translation, 3 trunk
inline constexpr uint32_t vlans = 457; // u8: how many VLANs there are: 1 to 8 of a translation or trunk, else 0
inline constexpr uint32_t pvid = 458; // u16: VLAN of untagged frames, 1 to 4094
inline constexpr uint32_t priority = 460; // u8: 802.1p priority of untagged frames, 0 to 7
inline constexpr uint32_t tpid = 462; // u16: type that a tag is known by, at least 1536; usually 33024 (8100h)
inline constexpr uint32_t user = 464; // u16: VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last
inline constexpr uint32_t user_every = 4; // from one user to the next
inline constexpr uint32_t network = 466; // u16: the same beyond the ONU: of a translation another for each, of a trunk that of the user
inline constexpr uint32_t network_every = 4; // from one network to the next
} // namespace layout::uni_profile

namespace layout::onu_port_config_set
{
inline constexpr uint32_t profile = 352; // u8: number of the UNI profile that the port takes, 1 to 32: then the rest does not count; 0 none
inline constexpr uint32_t admin = 353; // u8: 1 the port is on, 0 off
inline constexpr uint32_t autoneg = 354; // u8: 1 the port negotiates speed and duplex, 0 it takes those that it is configured to
inline constexpr uint32_t pause = 355; // u8: flow control: 1 on, 0 off
inline constexpr uint32_t up_cir = 356; // u32: upstream committed rate, 1 to 999999
inline constexpr uint32_t up_cbs = 360; // u32: upstream committed burst, 1522 to 16777215
inline constexpr uint32_t up_ebs = 364; // u32: upstream excess burst, at most 16777215
inline constexpr uint32_t down_cir = 368; // u32: downstream committed rate, at most down_pir
inline constexpr uint32_t down_pir = 372; // u32: downstream peak rate, which limits it, 1 to 999999
inline constexpr uint32_t up_on = 376; // u8: 1 where upstream is limited, else 0: then its values do not count
inline constexpr uint32_t down_on = 377; // u8: the same of downstream
inline constexpr uint32_t vlan_mode = 380; // u8: 0 transparent, 1 tag, 2 translation, 3 trunk
inline constexpr uint32_t vlans = 381; // u8: how many VLANs there are: 1 to 8 of a translation or trunk, else 0
inline constexpr uint32_t pvid = 382; // u16: VLAN of untagged frames, 1 to 4094
inline constexpr uint32_t priority = 384; // u8: 802.1p priority of untagged frames, 0 to 7
inline constexpr uint32_t tpid = 386; // u16: type that a tag is known by, at least 1536; usually 33024 (8100h)
inline constexpr uint32_t user = 388; // u16: VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last
inline constexpr uint32_t user_every = 4; // from one user to the next
inline constexpr uint32_t network = 390; // u16: the same beyond the ONU: of a translation another for each, of a trunk that of the user
inline constexpr uint32_t network_every = 4; // from one network to the next
} // namespace layout::onu_port_config_set

namespace layout::onu_config_set
{
inline constexpr uint32_t parts = 352; // u8: what is set, a sum, 1 to 15: 1 FEC, 2 multicast mode, 4 fast leave, 8 management address; the rest does not count
inline constexpr uint32_t multicast = 353; // u8: multicast mode: 0 IGMP/MLD snooping, 1 controllable multicast
inline constexpr uint32_t fec = 356; // u32: forward error correction: 2 on, 3 off
inline constexpr uint32_t fast_leave = 360; // u32: 1 on, 0 off
inline constexpr uint32_t address = 364; // bytes: management address: IPv4 address of a host, neither the first nor the last of its network; with mode 0 this and the rest is 0
inline constexpr uint32_t mask = 368; // bytes: network mask, of 1 to 30 bits from the left
inline constexpr uint32_t gateway = 372; // bytes: IPv4 address of the gateway, another host of the network; 0 none
inline constexpr uint32_t vlan = 376; // u16: VLAN, 1 to 4094; 0 untagged
inline constexpr uint32_t priority = 378; // u8: 802.1p priority, 0 to 7
inline constexpr uint32_t mode = 379; // u8: 0 off, 1 static address
inline constexpr uint32_t dscp = 380; // u8: DSCP of what the ONU sends, 0 to 63
} // namespace layout::onu_config_set

namespace layout::onu_wan_view
{
inline constexpr uint32_t index = 24; // u32: number of the connection, 1 to 8; 0 all
} // namespace layout::onu_wan_view

namespace layout::onu_wan
{
inline constexpr uint32_t index = 24; // u32: number of the connection, 1 to 8
inline constexpr uint32_t mode = 352; // u8: 0 removed, 1 bridge, 2 route: gateways only
inline constexpr uint32_t service = 353; // u8: what it is for: 1 internet, 2 voice, 3 management, 4 other
inline constexpr uint32_t ip_mode = 354; // u8: 0 of a bridge; of a route 1 static, 2 DHCP, 3 PPPoE
inline constexpr uint32_t priority = 355; // u8: 802.1p priority, 0 to 7
inline constexpr uint32_t vlan = 356; // u16: VLAN, 1 to 4094; 0 untagged
inline constexpr uint32_t address = 360; // bytes: IPv4 address of a host; 0 unless static
inline constexpr uint32_t mask = 364; // bytes: network mask, of 1 to 30 bits from the left; 0 unless static
inline constexpr uint32_t gateway = 368; // bytes: IPv4 address of the gateway, another host of the network, or 0 none; 0 unless static
inline constexpr uint32_t name = 372; // text: name, 1 to 23 bytes
} // namespace layout::onu_wan

namespace layout::onu_wlan
{
inline constexpr uint32_t index = 24; // u32: number of the WLAN, 1 to 4
inline constexpr uint32_t enabled = 352; // u8: 1 enabled, else 0
inline constexpr uint32_t channel = 353; // u8: channel, 1 to 13; 0 chosen by the ONU
inline constexpr uint32_t security = 354; // u8: 0 open, 1 WPA2, 2 WPA2 and WPA3, 3 WPA3
inline constexpr uint32_t hidden = 355; // u8: 1 where the name is not announced, else 0
inline constexpr uint32_t name = 356; // text: SSID, 1 to 32 bytes
} // namespace layout::onu_wlan

namespace layout::onu_acl
{
inline constexpr uint32_t index = 24; // u32: number of the rule, 1 to 8
inline constexpr uint32_t action = 352; // u8: 0 removed, 1 permit, 2 deny
inline constexpr uint32_t direction = 353; // u8: 1 upstream, 2 downstream
inline constexpr uint32_t protocol = 354; // u8: IP protocol number, 6 TCP and 17 UDP; 0 any
inline constexpr uint32_t source = 356; // bytes: IPv4 address of the sender's network
inline constexpr uint32_t source_mask = 360; // bytes: its mask, of 1 to 32 bits from the left; 0 with source 0: any
inline constexpr uint32_t dest = 364; // bytes: IPv4 address of the receiver's network
inline constexpr uint32_t dest_mask = 368; // bytes: its mask, of 1 to 32 bits from the left; 0 with dest 0: any
inline constexpr uint32_t first_port = 372; // u16: first port of the receiver, of TCP and UDP only; 0 any
inline constexpr uint32_t last_port = 374; // u16: last one, at least first_port; 0 with first_port 0
} // namespace layout::onu_acl

namespace layout::onu_dhcp
{
inline constexpr uint32_t enabled = 352; // u8: 1 enabled, else 0
inline constexpr uint32_t lease_time = 356; // u32: how long an address is leased, 60 to 864000
inline constexpr uint32_t address = 360; // bytes: IPv4 address of the gateway on the users' side, a host's
inline constexpr uint32_t mask = 364; // bytes: network mask, of 1 to 30 bits from the left
inline constexpr uint32_t first = 368; // bytes: first address that is leased, a host's of the network
inline constexpr uint32_t last = 372; // bytes: last one, at least the first; the gateway's is not among them
} // namespace layout::onu_dhcp

namespace layout::onu_sn
{
inline constexpr uint32_t vendor = 352; // text: vendor id
inline constexpr uint32_t model = 356; // text: model
inline constexpr uint32_t mac = 360; // mac: ONU id: its MAC address
inline constexpr uint32_t hardware = 366; // text: hardware version
inline constexpr uint32_t software = 374; // text: software version that runs
inline constexpr uint32_t extended_model = 390; // text: extended model: the model, and its user ports
} // namespace layout::onu_sn

namespace layout::onu_fw
{
inline constexpr uint32_t version = 352; // text: version of the firmware that runs: that of the software, after an upgrade the new one
} // namespace layout::onu_fw

namespace layout::onu_chip_id
{
inline constexpr uint32_t vendor = 352; // text: vendor id
inline constexpr uint32_t model = 354; // u16: model number
inline constexpr uint32_t revision = 356; // u8: revision, from 1 on
inline constexpr uint32_t date = 357; // bytes: date of its design, YYMMDD, a decimal digit each half of a byte
} // namespace layout::onu_chip_id

namespace layout::onu_cap
{
inline constexpr uint32_t services = 352; // u8: services: bit 0 GE, 1 FE, 2 VoIP, 3 TDM
inline constexpr uint32_t ge_ports = 353; // u8: number of GE ports
inline constexpr uint32_t ge_bitmap = 354; // bytes: which UNI ports are GE ports
inline constexpr uint32_t fe_ports = 362; // u8: number of FE ports
inline constexpr uint32_t fe_bitmap = 363; // bytes: which UNI ports are FE ports
inline constexpr uint32_t pots_ports = 371; // u8: number of POTS ports
inline constexpr uint32_t e1_ports = 372; // u8: number of E1 ports: none has any
inline constexpr uint32_t us_queues = 373; // u8: upstream queues of the ONU
inline constexpr uint32_t us_queues_of_port = 374; // u8: upstream queues of a UNI port, at most: its ports share those of the ONU
inline constexpr uint32_t ds_queues = 375; // u8: downstream queues of the ONU
inline constexpr uint32_t ds_queues_of_port = 376; // u8: downstream queues of a UNI port, at most
inline constexpr uint32_t battery = 377; // u8: 1 where there is battery backup, else 0
} // namespace layout::onu_cap

namespace layout::onu_cap2
{
inline constexpr uint32_t onu_type = 352; // u32: 0 SFU, 1 HGU, 2 SBU
inline constexpr uint32_t multi_llid = 356; // u8: 1: more than one LLID can be set
inline constexpr uint32_t protection = 357; // u8: protection of its PON interface: 0 none, 1 type C, 2 type D
inline constexpr uint32_t pon_interfaces = 358; // u8: number of PON interfaces
inline constexpr uint32_t slots = 359; // u8: number of slots: 0, no ONU has cards
inline constexpr uint32_t interface_types = 360; // u8: how many of the interface types that follow count
inline constexpr uint32_t interface_type = 364; // u8: interface type: 0 GE, 1 FE, 2 VoIP
inline constexpr uint32_t interface_type_every = 6; // from one interface_type to the next
inline constexpr uint32_t interface_number = 366; // u8: how many interfaces of this type there are
inline constexpr uint32_t interface_number_every = 6; // from one interface_number to the next
inline constexpr uint32_t battery = 415; // u8: 1 where there is battery backup, else 0
} // namespace layout::onu_cap2

namespace layout::onu_mem_info
{
inline constexpr uint32_t memory_total = 352; // u32: memory
inline constexpr uint32_t memory_free = 356; // u32: what of it is free
inline constexpr uint32_t flash_total = 360; // u32: flash memory
inline constexpr uint32_t flash_free = 364; // u32: what of it is free
} // namespace layout::onu_mem_info

namespace layout::onu_device_info
{
inline constexpr uint32_t mac = 352; // mac: MAC address
inline constexpr uint32_t onu_type = 358; // u8: 0 SFU, 1 HGU, 2 SBU
inline constexpr uint32_t ge_ports = 359; // u8: number of GE UNI ports; they are the first ones
inline constexpr uint32_t fe_ports = 360; // u8: number of FE UNI ports
inline constexpr uint32_t pots_ports = 361; // u8: number of POTS ports
inline constexpr uint32_t battery = 362; // u8: 1 where there is battery backup, else 0
inline constexpr uint32_t cpu_load = 363; // u8: load of its processor in five seconds of model time
inline constexpr uint32_t llids = 364; // u32: number of LLIDs that it has
inline constexpr uint32_t memory_total = 368; // u32: memory
inline constexpr uint32_t flash_total = 372; // u32: flash memory
inline constexpr uint32_t temperature = 376; // s32: temperature of its optical transceiver
inline constexpr uint32_t chip_revision = 380; // u32: revision of its PON chip, from 1 on
inline constexpr uint32_t vendor = 384; // text: vendor id
inline constexpr uint32_t model = 388; // text: model
inline constexpr uint32_t extended_model = 392; // text: extended model: the model, and its user ports
inline constexpr uint32_t serial = 408; // text: serial number: the vendor id, and the last four bytes of the MAC address
inline constexpr uint32_t hardware = 420; // text: hardware version
inline constexpr uint32_t software = 428; // text: software version that runs
inline constexpr uint32_t chipset = 444; // text: PON chip: vendor id and model number
} // namespace layout::onu_device_info

namespace layout::onu_about
{
inline constexpr uint32_t mac = 352; // mac: MAC address
inline constexpr uint32_t onu_id = 358; // u8: id that it is bound to
inline constexpr uint32_t state = 359; // u8: 0 offline, 1 online, 2 unauthenticated: turned away for its LOID
inline constexpr uint32_t pon_port = 360; // u32: PON port number
inline constexpr uint32_t llid = 364; // u32: its LLID, where it has several the first
inline constexpr uint32_t llids = 368; // u32: how many LLIDs it was told to have
inline constexpr uint32_t distance = 372; // u32: distance that ranging found; 0 while the ONU is offline
inline constexpr uint32_t received_power = 376; // s32: what the port receives of it; -40 while it is offline
inline constexpr uint32_t reboots = 380; // u32: how often it was rebooted by command, or after an upgrade
inline constexpr uint32_t vendor = 384; // text: vendor id
inline constexpr uint32_t model = 388; // text: model
inline constexpr uint32_t extended_model = 392; // text: extended model: the model, and its user ports
inline constexpr uint32_t serial = 408; // text: serial number: the vendor id, and the last four bytes of the MAC address
inline constexpr uint32_t hardware = 420; // text: hardware version
inline constexpr uint32_t software = 428; // text: software version
inline constexpr uint32_t chipset = 444; // text: PON chip: vendor id and model number
inline constexpr uint32_t ge_ports = 452; // u8: number of GE UNI ports; they are the first ones
inline constexpr uint32_t fe_ports = 453; // u8: number of FE UNI ports
inline constexpr uint32_t pots_ports = 454; // u8: number of POTS ports
inline constexpr uint32_t battery = 455; // u8: 1 where there is battery backup, else 0
inline constexpr uint32_t unis_enabled = 456; // u32: how many of its UNI ports are enabled
inline constexpr uint32_t unis_up = 460; // u32: how many of its UNI ports have a link; 0 unless it is online
} // namespace layout::onu_about

namespace layout::onu_max_port
{
inline constexpr uint32_t unis = 8; // u8: number of UNI ports, 1 to 4
} // namespace layout::onu_max_port

namespace layout::onu_optics
{
inline constexpr uint32_t temperature = 352; // s16: temperature, in 1/256 degC
inline constexpr uint32_t voltage = 354; // u16: supply voltage
inline constexpr uint32_t bias = 356; // u16: bias of the laser
inline constexpr uint32_t launch_power = 358; // u16: launch power
inline constexpr uint32_t received_power = 360; // u16: power received from the OLT
} // namespace layout::onu_optics

namespace layout::onu_image_part
{
inline constexpr uint32_t offset = 352; // u32: where in the image the part begins: 0, or where the image has got to
inline constexpr uint32_t size = 356; // u32: size of the whole image, 1 to 16777216; the same in all of its parts
inline constexpr uint32_t length = 360; // u32: length of this part, 1 to 1504
inline constexpr uint32_t version = 364; // text: software version of the image, in its first part: 1 to 16 visible ASCII characters without blanks, quotes and backslashes; not read in the others
inline constexpr uint32_t data = 384; // bytes: the bytes of the image, from the left
} // namespace layout::onu_image_part

namespace layout::onu_image_status
{
inline constexpr uint32_t state = 352; // u32: 0 none, 1 receiving, 2 complete, 3 committed: the ONU runs it from its next restart on, 4 started: the ONU runs it, 5 failed verification
inline constexpr uint32_t received = 356; // u32: how much the ONU has received; the next part begins there
inline constexpr uint32_t size = 360; // u32: size of the whole image
inline constexpr uint32_t crc = 364; // u32: CRC-32 (as in Ethernet) of what the ONU has received
inline constexpr uint32_t bank = 368; // u16: bank that it goes to, 1 or 2
inline constexpr uint32_t progress = 370; // u16: how much of the image the ONU has received
} // namespace layout::onu_image_status

namespace layout::onu_banks
{
inline constexpr uint32_t version = 352; // text: software version of the image
inline constexpr uint32_t version_every = 32; // from one version to the next
inline constexpr uint32_t valid = 369; // u8: 1 where the image is complete and verified
inline constexpr uint32_t valid_every = 32; // from one valid to the next
inline constexpr uint32_t active = 370; // u8: 1 where the ONU runs the image
inline constexpr uint32_t active_every = 32; // from one active to the next
inline constexpr uint32_t committed = 371; // u8: 1 where the ONU runs the image from its next restart on
inline constexpr uint32_t committed_every = 32; // from one committed to the next
inline constexpr uint32_t size = 372; // u32: size of the image
inline constexpr uint32_t size_every = 32; // from one size to the next
inline constexpr uint32_t crc = 376; // u32: CRC-32 of the image, while it is received of what has come. Of an image that was not pushed, the same for all ONUs of a vendor and model with the version
inline constexpr uint32_t crc_every = 32; // from one crc to the next
} // namespace layout::onu_banks

namespace layout::onu_image_update
{
inline constexpr uint32_t bank = 352; // u32: bank that the image goes to, 1 or 2, which must not be the active one; 0 the one that is not
inline constexpr uint32_t file = 356; // text: file name of the image, as the upgrade type has it
} // namespace layout::onu_image_update

namespace layout::onu_fast_leave_ability
{
inline constexpr uint32_t number = 352; // u32: how many of the words behind it count, 0 to 4; 0 where the ONU knows no multicast
inline constexpr uint32_t ability = 356; // u32: 0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast
inline constexpr uint32_t ability_every = 4; // from one ability to the next
} // namespace layout::onu_fast_leave_ability

namespace layout::onu_fast_leave
{
inline constexpr uint32_t state = 352; // u32: 0 off, which it is until set; 1 on
} // namespace layout::onu_fast_leave

namespace layout::onu_fast_leave_set
{
inline constexpr uint32_t state = 352; // u32: 0 off: a port leaves a group once queries stay unanswered; 1 on: with the first leave message
} // namespace layout::onu_fast_leave_set

namespace layout::onu_fast_leave_local
{
inline constexpr uint32_t state = 352; // u32: 0 off, 1 on
inline constexpr uint32_t number = 356; // u32: how many of the words behind it count, 0 to 4; 0 where the ONU knows no multicast
inline constexpr uint32_t ability = 360; // u32: 0 leave with queries in snooping, 1 fast leave in snooping, 16 leave with queries in controllable multicast, 17 fast leave in controllable multicast
inline constexpr uint32_t ability_every = 4; // from one ability to the next
} // namespace layout::onu_fast_leave_local

namespace layout::onu_mc_switch
{
inline constexpr uint32_t mode = 352; // u8: 0 IGMP/MLD snooping, which it is until set, and of kinds of ONUs without multicast; 1 controllable multicast
} // namespace layout::onu_mc_switch

namespace layout::onu_mc_switch_set
{
inline constexpr uint32_t mode = 352; // u8: 0 IGMP/MLD snooping: users join what they like in the multicast VLANs of their UNI port; 1 controllable multicast: UNI ports join what the OLT tells
} // namespace layout::onu_mc_switch_set

namespace layout::onu_mc_group_max
{
inline constexpr uint32_t maximum = 352; // u16: 0 to 255; 32 until set, and 0 of kinds of ONUs without multicast
} // namespace layout::onu_mc_group_max

namespace layout::onu_mc_group_max_set
{
inline constexpr uint32_t maximum = 352; // u16: 0 to 255; with 0 it joins none
} // namespace layout::onu_mc_group_max_set

namespace layout::onu_mc_vlan_mode
{
inline constexpr uint32_t mode = 352; // u8: 0 they stay, which it is until set; 1 they are stripped; 2 they are translated
inline constexpr uint32_t number = 353; // u8: how many pairs count: 1 to 8 where tags are translated, else 0
inline constexpr uint32_t mc_vlan = 354; // u16: multicast VLAN; 0 where the pair does not count
inline constexpr uint32_t mc_vlan_every = 4; // from one mc_vlan to the next
inline constexpr uint32_t user_vlan = 356; // u16: VLAN that its frames are tagged with at the port; 0 where the pair does not count
inline constexpr uint32_t user_vlan_every = 4; // from one user_vlan to the next
} // namespace layout::onu_mc_vlan_mode

namespace layout::onu_mc_vlan_mode_set
{
inline constexpr uint32_t mode = 352; // u8: 0 they stay; 1 they are stripped; 2 they are translated
inline constexpr uint32_t number = 353; // u8: how many pairs count: 1 to 8 where tags are translated, else 0
inline constexpr uint32_t mc_vlan = 354; // u16: multicast VLAN, 1 to 4094, each once; 0 where the pair does not count
inline constexpr uint32_t mc_vlan_every = 4; // from one mc_vlan to the next
inline constexpr uint32_t user_vlan = 356; // u16: VLAN that its frames are tagged with at the port, 1 to 4094; 0 where the pair does not count
inline constexpr uint32_t user_vlan_every = 4; // from one user_vlan to the next
} // namespace layout::onu_mc_vlan_mode_set

namespace layout::onu_mc_vlan
{
inline constexpr uint32_t operation = 352; // u8: 3: a list
inline constexpr uint32_t number = 353; // u8: how many VLANs there are, 0 to 8
inline constexpr uint32_t vlan = 354; // u16: the VLANs in the order in which they were added, 1 to 4094; 0 behind the last
inline constexpr uint32_t vlan_every = 2; // from one vlan to the next
} // namespace layout::onu_mc_vlan

namespace layout::onu_mc_vlan_set
{
inline constexpr uint32_t operation = 352; // u8: 0 delete these VLANs, 1 add them, 2 clear: delete all
inline constexpr uint32_t number = 353; // u8: how many VLANs count: 1 to 8; 0 to clear
inline constexpr uint32_t vlan = 354; // u16: the VLANs, 1 to 4094, each once; those that do not count are not read
inline constexpr uint32_t vlan_every = 2; // from one vlan to the next
} // namespace layout::onu_mc_vlan_set

namespace layout::onu_mc_vlan_local
{
inline constexpr uint32_t vlan = 352; // u16: the VLANs in the order in which they were added, 1 to 4094; 0 behind the last
inline constexpr uint32_t vlan_every = 2; // from one vlan to the next
} // namespace layout::onu_mc_vlan_local

namespace layout::onu_mc_group
{
inline constexpr uint32_t action = 352; // u8: 3: a list
inline constexpr uint32_t control_type = 353; // u8: 1: groups are told apart by MAC address and VLAN
inline constexpr uint32_t number = 354; // u8: how many entries there are, 0 to 128; those behind them are zero
inline constexpr uint32_t uni = 356; // u16: UNI port
inline constexpr uint32_t uni_every = 10; // from one uni to the next
inline constexpr uint32_t vlan = 358; // u16: multicast VLAN
inline constexpr uint32_t vlan_every = 10; // from one vlan to the next
inline constexpr uint32_t group = 360; // mac: MAC address of the group
inline constexpr uint32_t group_every = 10; // from one group to the next
} // namespace layout::onu_mc_group

namespace layout::onu_mc_group_set
{
inline constexpr uint32_t action = 352; // u8: 0 delete these entries, 1 add them, 2 clear: delete all
inline constexpr uint32_t control_type = 353; // u8: 1: groups are told apart by MAC address and VLAN
inline constexpr uint32_t number = 354; // u8: how many entries count: 1 to 128; 0 to clear
inline constexpr uint32_t uni = 356; // u16: UNI port; entries that do not count are not read
inline constexpr uint32_t uni_every = 10; // from one uni to the next
inline constexpr uint32_t vlan = 358; // u16: multicast VLAN, 1 to 4094
inline constexpr uint32_t vlan_every = 10; // from one vlan to the next
inline constexpr uint32_t group = 360; // mac: MAC address of the group: 01:00:5e:* of IPv4, 33:33:* of IPv6; no entry twice
inline constexpr uint32_t group_every = 10; // from one group to the next
} // namespace layout::onu_mc_group_set

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

namespace layout::onu_mgmt
{
inline constexpr uint32_t address = 352; // bytes: IPv4 address
inline constexpr uint32_t mask = 356; // bytes: network mask
inline constexpr uint32_t gateway = 360; // bytes: IPv4 address of the gateway; 0 none
inline constexpr uint32_t vlan = 364; // u16: VLAN, 1 to 4094; 0 untagged
inline constexpr uint32_t priority = 366; // u8: 802.1p priority, 0 to 7
inline constexpr uint32_t mode = 367; // u8: 0 off, 1 static address
inline constexpr uint32_t dscp = 368; // u8: DSCP of what the ONU sends, 0 to 63
} // namespace layout::onu_mgmt

namespace layout::onu_mgmt_set
{
inline constexpr uint32_t address = 352; // bytes: IPv4 address of a host: neither the first nor the last of its network
inline constexpr uint32_t mask = 356; // bytes: network mask, of 1 to 30 bits from the left
inline constexpr uint32_t gateway = 360; // bytes: IPv4 address of the gateway, another host of the network; 0 none
inline constexpr uint32_t vlan = 364; // u16: VLAN, 1 to 4094; 0 untagged
inline constexpr uint32_t priority = 366; // u8: 802.1p priority, 0 to 7
inline constexpr uint32_t mode = 367; // u8: 0 off, 1 static address
inline constexpr uint32_t dscp = 368; // u8: DSCP of what the ONU sends, 0 to 63
} // namespace layout::onu_mgmt_set

namespace layout::onu_fec
{
inline constexpr uint32_t mode = 352; // u32: 1 unknown: the ONU cannot correct errors; 2 enabled, 3 disabled
} // namespace layout::onu_fec

namespace layout::onu_fec_set
{
inline constexpr uint32_t mode = 352; // u32: 2 enabled, 3 disabled
} // namespace layout::onu_fec_set

namespace layout::onu_fec_ability
{
inline constexpr uint32_t ability = 352; // u32: 2 supported, 3 not supported
} // namespace layout::onu_fec_ability

namespace layout::onu_time
{
inline constexpr uint32_t server = 352; // bytes: IPv4 address of the time server; 0 none
inline constexpr uint32_t backup = 356; // bytes: IPv4 address of a second one; 0 none
inline constexpr uint32_t interval = 360; // u32: between two questions to the server, 16 to 86400
inline constexpr uint32_t zone = 364; // s16: time zone, east of UTC: -720 to 840
inline constexpr uint32_t mode = 366; // u8: 0 the time of the OLT, 1 SNTP
inline constexpr uint32_t summer = 367; // u8: 1 while summer time adds an hour to the zone, else 0
} // namespace layout::onu_time

namespace layout::onu_time_set
{
inline constexpr uint32_t server = 352; // bytes: IPv4 address of the time server; 0 none, in mode 0 only
inline constexpr uint32_t backup = 356; // bytes: IPv4 address of a second one; 0 none
inline constexpr uint32_t interval = 360; // u32: between two questions to the server, 16 to 86400
inline constexpr uint32_t zone = 364; // s16: time zone, east of UTC: -720 to 840
inline constexpr uint32_t mode = 366; // u8: 0 the time of the OLT, 1 SNTP
inline constexpr uint32_t summer = 367; // u8: 1 while summer time adds an hour to the zone, else 0
} // namespace layout::onu_time_set

namespace layout::onu_sla
{
inline constexpr uint32_t operation = 352; // u8: 1 where the OLT has an SLA stored, 0 where the default holds
inline constexpr uint32_t scheduling = 353; // u8: 0 strict priority
inline constexpr uint32_t boundary = 354; // u8: lowest queue that is served by strict priority
inline constexpr uint32_t services = 355; // u8: number of services, 0 to 8
inline constexpr uint32_t cycle = 356; // u32: time in which fixed bandwidth is granted once
inline constexpr uint32_t queue = 360; // u8: queue of the service: the SLA's priority, 0 lowest to 7 highest
inline constexpr uint32_t queue_every = 10; // from one queue to the next
inline constexpr uint32_t weight = 361; // u8: share among those of one priority
inline constexpr uint32_t weight_every = 10; // from one weight to the next
inline constexpr uint32_t packet_size = 362; // u16: size of the packets that fixed bandwidth is for; 0 without any
inline constexpr uint32_t packet_size_every = 10; // from one packet_size to the next
inline constexpr uint32_t fixed = 364; // u16: bandwidth that is granted whether used or not
inline constexpr uint32_t fixed_every = 10; // from one fixed to the next
inline constexpr uint32_t guaranteed = 366; // u16: further bandwidth that is granted when asked for
inline constexpr uint32_t guaranteed_every = 10; // from one guaranteed to the next
inline constexpr uint32_t best_effort = 368; // u16: bandwidth that is never exceeded
inline constexpr uint32_t best_effort_every = 10; // from one best_effort to the next
} // namespace layout::onu_sla

namespace layout::onu_multi_llid
{
inline constexpr uint32_t llids = 24; // u32: how many, 1 to 8; 1 at first
} // namespace layout::onu_multi_llid

namespace layout::oam_print
{
inline constexpr uint32_t level = 24; // u32: 0 nothing, as at first; 1 errors, 2 errors and messages
} // namespace layout::oam_print

namespace layout::onu_alarm_test
{
inline constexpr uint32_t alarm = 24; // u32: an alarm of ONUs by its number in the table of alarms: 1 los, 2 dying_gasp, 3 rejected, 4 auth_failed, 7 receive_degraded, 10 deregistered
} // namespace layout::onu_alarm_test

namespace layout::onu_admin_state
{
inline constexpr uint32_t on = 352; // u32: 1 on, 0 off
} // namespace layout::onu_admin_state

namespace layout::onu_admin_state_set
{
inline constexpr uint32_t on = 352; // u32: 1 on, 0 off
} // namespace layout::onu_admin_state_set

namespace layout::onu_autoneg
{
inline constexpr uint32_t on = 352; // u32: 1 on, 0 off
} // namespace layout::onu_autoneg

namespace layout::onu_autoneg_set
{
inline constexpr uint32_t on = 352; // u32: 1 on, 0 off
} // namespace layout::onu_autoneg_set

namespace layout::onu_autoneg_local
{
inline constexpr uint32_t count = 352; // u32: how many abilities there are, 1 to 5
inline constexpr uint32_t ability = 356; // u32: AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last
inline constexpr uint32_t ability_every = 4; // from one ability to the next
} // namespace layout::onu_autoneg_local

namespace layout::onu_autoneg_adv
{
inline constexpr uint32_t count = 352; // u32: how many abilities there are, 1 to 5
inline constexpr uint32_t ability = 356; // u32: AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last
inline constexpr uint32_t ability_every = 4; // from one ability to the next
} // namespace layout::onu_autoneg_adv

namespace layout::onu_autoneg_adv_set
{
inline constexpr uint32_t count = 352; // u32: how many abilities there are, 1 to 5
inline constexpr uint32_t ability = 356; // u32: AutoNegTechnology of IEEE 802.3, Annex 30B: 14 10BASE-T, 142 10BASE-T full duplex, 25 100BASE-TX, 252 100BASE-TX full duplex, 402 1000BASE-T full duplex; 0 behind the last
inline constexpr uint32_t ability_every = 4; // from one ability to the next
} // namespace layout::onu_autoneg_adv_set

namespace layout::onu_pause
{
inline constexpr uint32_t on = 352; // u8: 1 on, 0 off
} // namespace layout::onu_pause

namespace layout::onu_pause_set
{
inline constexpr uint32_t on = 352; // u8: 1 on, 0 off
} // namespace layout::onu_pause_set

namespace layout::onu_phy_info
{
inline constexpr uint32_t link = 352; // u32: 1 while there is a link, else 0
inline constexpr uint32_t speed = 356; // u32: speed of the link; 0 without one
inline constexpr uint32_t full_duplex = 360; // u32: 1 where the link is full duplex
inline constexpr uint32_t line_rate = 364; // u32: highest speed of the port: 100 of an FE port, 1000 of a GE port
inline constexpr uint32_t negotiation = 368; // u32: auto-negotiation: 0 off, 1 without a result, 2 complete
inline constexpr uint32_t pause = 372; // u32: 1 while there is flow control: it is on, and the link is full duplex
} // namespace layout::onu_phy_info

namespace layout::onu_rate_limit
{
inline constexpr uint32_t up_cir = 352; // u32: upstream committed rate, 1 to 999999
inline constexpr uint32_t up_cbs = 356; // u32: upstream committed burst, 1522 to 16777215
inline constexpr uint32_t up_ebs = 360; // u32: upstream excess burst, at most 16777215
inline constexpr uint32_t down_cir = 364; // u32: downstream committed rate, at most down_pir
inline constexpr uint32_t down_pir = 368; // u32: downstream peak rate, which limits it, 1 to 999999
inline constexpr uint32_t up_on = 372; // u8: 1 where upstream is limited, else 0: then its values do not count
inline constexpr uint32_t down_on = 373; // u8: the same of downstream
} // namespace layout::onu_rate_limit

namespace layout::onu_rate_limit_set
{
inline constexpr uint32_t up_cir = 352; // u32: upstream committed rate, 1 to 999999
inline constexpr uint32_t up_cbs = 356; // u32: upstream committed burst, 1522 to 16777215
inline constexpr uint32_t up_ebs = 360; // u32: upstream excess burst, at most 16777215
inline constexpr uint32_t down_cir = 364; // u32: downstream committed rate, at most down_pir
inline constexpr uint32_t down_pir = 368; // u32: downstream peak rate, which limits it, 1 to 999999
inline constexpr uint32_t up_on = 372; // u8: 1 where upstream is limited, else 0: then its values do not count
inline constexpr uint32_t down_on = 373; // u8: the same of downstream
} // namespace layout::onu_rate_limit_set

namespace layout::onu_loop_detect
{
inline constexpr uint32_t on = 352; // u32: 1 on, which it is until it is told otherwise; 0 off
inline constexpr uint32_t state = 356; // u32: 0 no loop, 1 a loop is there, 2 the port is shut for one
} // namespace layout::onu_loop_detect

namespace layout::onu_loop_detect_set
{
inline constexpr uint32_t on = 352; // u32: 1 on, 0 off
} // namespace layout::onu_loop_detect_set

namespace layout::onu_vlan
{
inline constexpr uint32_t mode = 352; // u8: 0 transparent, 1 tag, 2 translation, 3 trunk
inline constexpr uint32_t count = 353; // u8: how many VLANs there are: 1 to 8 of a translation or trunk, else 0
inline constexpr uint32_t pvid = 354; // u16: VLAN of untagged frames, 1 to 4094
inline constexpr uint32_t priority = 356; // u8: 802.1p priority of untagged frames, 0 to 7
inline constexpr uint32_t tpid = 358; // u16: type that a tag is known by, at least 1536; usually 33024 (8100h)
inline constexpr uint32_t user = 360; // u16: VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last
inline constexpr uint32_t user_every = 4; // from one user to the next
inline constexpr uint32_t network = 362; // u16: the same beyond the ONU: of a translation another for each, of a trunk that of the user
inline constexpr uint32_t network_every = 4; // from one network to the next
} // namespace layout::onu_vlan

namespace layout::onu_vlan_set
{
inline constexpr uint32_t mode = 352; // u8: 0 transparent, 1 tag, 2 translation, 3 trunk
inline constexpr uint32_t count = 353; // u8: how many VLANs there are: 1 to 8 of a translation or trunk, else 0
inline constexpr uint32_t pvid = 354; // u16: VLAN of untagged frames, 1 to 4094
inline constexpr uint32_t priority = 356; // u8: 802.1p priority of untagged frames, 0 to 7
inline constexpr uint32_t tpid = 358; // u16: type that a tag is known by, at least 1536; usually 33024 (8100h)
inline constexpr uint32_t user = 360; // u16: VLAN at the UNI port, 1 to 4094, in ascending order; 0 behind the last
inline constexpr uint32_t user_every = 4; // from one user to the next
inline constexpr uint32_t network = 362; // u16: the same beyond the ONU: of a translation another for each, of a trunk that of the user
inline constexpr uint32_t network_every = 4; // from one network to the next
} // namespace layout::onu_vlan_set

namespace layout::onu_classification
{
inline constexpr uint32_t action = 352; // u8: in requests: 0 deletes the rules with these precedences, 1 adds these, in the place of any of the same precedence, 2 deletes all (and has none); in answers 1
inline constexpr uint32_t count = 353; // u8: how many rules follow, at most 8
inline constexpr uint32_t precedence = 354; // u8: tells one rule from another; the rule with the lowest is tried first
inline constexpr uint32_t precedence_every = 37; // from one precedence to the next
inline constexpr uint32_t length = 355; // u8: bytes of the rule behind this one; in requests it does not count
inline constexpr uint32_t length_every = 37; // from one length to the next
inline constexpr uint32_t queue = 356; // u8: queue for frames that match, 0 to 7, and less than the ONU has
inline constexpr uint32_t queue_every = 37; // from one queue to the next
inline constexpr uint32_t mark = 357; // u8: 802.1p priority that they are given, 0 to 7; 255 leaves it
inline constexpr uint32_t mark_every = 37; // from one mark to the next
inline constexpr uint32_t entries = 358; // u8: how many conditions there are, 1 to 4; a frame must meet all
inline constexpr uint32_t entries_every = 37; // from one entries to the next
inline constexpr uint32_t field_a = 359; // u8: what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port
inline constexpr uint32_t field_a_every = 37; // from one field_a to the next
inline constexpr uint32_t value_a = 360; // bytes: value, a number with the highest byte first, no wider than what it is compared with
inline constexpr uint32_t value_a_every = 37; // from one value_a to the next
inline constexpr uint32_t operator_a = 366; // u8: 0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always
inline constexpr uint32_t operator_a_every = 37; // from one operator_a to the next
inline constexpr uint32_t field_b = 367; // u8: of the next condition, likewise
inline constexpr uint32_t field_b_every = 37; // from one field_b to the next
inline constexpr uint32_t value_b = 368; // bytes: its value
inline constexpr uint32_t value_b_every = 37; // from one value_b to the next
inline constexpr uint32_t operator_b = 374; // u8: its operator
inline constexpr uint32_t operator_b_every = 37; // from one operator_b to the next
inline constexpr uint32_t field_c = 375; // u8: of the next condition, likewise
inline constexpr uint32_t field_c_every = 37; // from one field_c to the next
inline constexpr uint32_t value_c = 376; // bytes: its value
inline constexpr uint32_t value_c_every = 37; // from one value_c to the next
inline constexpr uint32_t operator_c = 382; // u8: its operator
inline constexpr uint32_t operator_c_every = 37; // from one operator_c to the next
inline constexpr uint32_t field_d = 383; // u8: of the next condition, likewise
inline constexpr uint32_t field_d_every = 37; // from one field_d to the next
inline constexpr uint32_t value_d = 384; // bytes: its value
inline constexpr uint32_t value_d_every = 37; // from one value_d to the next
inline constexpr uint32_t operator_d = 390; // u8: its operator
inline constexpr uint32_t operator_d_every = 37; // from one operator_d to the next
} // namespace layout::onu_classification

namespace layout::onu_classification_set
{
inline constexpr uint32_t action = 352; // u8: in requests: 0 deletes the rules with these precedences, 1 adds these, in the place of any of the same precedence, 2 deletes all (and has none); in answers 1
inline constexpr uint32_t count = 353; // u8: how many rules follow, at most 8
inline constexpr uint32_t precedence = 354; // u8: tells one rule from another; the rule with the lowest is tried first
inline constexpr uint32_t precedence_every = 37; // from one precedence to the next
inline constexpr uint32_t length = 355; // u8: bytes of the rule behind this one; in requests it does not count
inline constexpr uint32_t length_every = 37; // from one length to the next
inline constexpr uint32_t queue = 356; // u8: queue for frames that match, 0 to 7, and less than the ONU has
inline constexpr uint32_t queue_every = 37; // from one queue to the next
inline constexpr uint32_t mark = 357; // u8: 802.1p priority that they are given, 0 to 7; 255 leaves it
inline constexpr uint32_t mark_every = 37; // from one mark to the next
inline constexpr uint32_t entries = 358; // u8: how many conditions there are, 1 to 4; a frame must meet all
inline constexpr uint32_t entries_every = 37; // from one entries to the next
inline constexpr uint32_t field_a = 359; // u8: what is compared: 0 destination MAC, 1 source MAC, 2 802.1p priority, 3 VLAN, 4 Ethertype, 5 destination IPv4, 6 source IPv4, 7 IP protocol, 8 DSCP of IPv4, 9 traffic class of IPv6, 10 source port, 11 destination port
inline constexpr uint32_t field_a_every = 37; // from one field_a to the next
inline constexpr uint32_t value_a = 360; // bytes: value, a number with the highest byte first, no wider than what it is compared with
inline constexpr uint32_t value_a_every = 37; // from one value_a to the next
inline constexpr uint32_t operator_a = 366; // u8: 0 never, 1 equal, 2 not equal, 3 at most, 4 at least, 5 the frame has it, 6 it has it not, 7 always
inline constexpr uint32_t operator_a_every = 37; // from one operator_a to the next
inline constexpr uint32_t field_b = 367; // u8: of the next condition, likewise
inline constexpr uint32_t field_b_every = 37; // from one field_b to the next
inline constexpr uint32_t value_b = 368; // bytes: its value
inline constexpr uint32_t value_b_every = 37; // from one value_b to the next
inline constexpr uint32_t operator_b = 374; // u8: its operator
inline constexpr uint32_t operator_b_every = 37; // from one operator_b to the next
inline constexpr uint32_t field_c = 375; // u8: of the next condition, likewise
inline constexpr uint32_t field_c_every = 37; // from one field_c to the next
inline constexpr uint32_t value_c = 376; // bytes: its value
inline constexpr uint32_t value_c_every = 37; // from one value_c to the next
inline constexpr uint32_t operator_c = 382; // u8: its operator
inline constexpr uint32_t operator_c_every = 37; // from one operator_c to the next
inline constexpr uint32_t field_d = 383; // u8: of the next condition, likewise
inline constexpr uint32_t field_d_every = 37; // from one field_d to the next
inline constexpr uint32_t value_d = 384; // bytes: its value
inline constexpr uint32_t value_d_every = 37; // from one value_d to the next
inline constexpr uint32_t operator_d = 390; // u8: its operator
inline constexpr uint32_t operator_d_every = 37; // from one operator_d to the next
} // namespace layout::onu_classification_set

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

namespace layout::profile_line
{
inline constexpr uint32_t name = 24; // text: name, at least one character: UTF-8 without control characters
inline constexpr uint32_t id = 56; // u32: number, 1 to 256, that no other of the kind has; 0: the profile keeps the one it has, and a new one gets the lowest that is free
inline constexpr uint32_t vlan = 60; // u32: VLAN of the service, 1 to 4094; 0 untagged
inline constexpr uint32_t priority = 64; // u32: 802.1p priority, 0 to 7
inline constexpr uint32_t upstream = 68; // u32: maximum upstream rate, 1 to 1000000; 0 no limit
inline constexpr uint32_t downstream = 72; // u32: maximum downstream rate, 1 to 1000000; 0 no limit
inline constexpr uint32_t mac_limit = 76; // u32: MAC addresses that may be learnt, 1 to 1024; 0 no limit
} // namespace layout::profile_line

namespace layout::profile_line_fetched
{
inline constexpr uint32_t name = 24; // text: name, at least one character: UTF-8 without control characters
inline constexpr uint32_t id = 56; // u32: number, 1 to 256
inline constexpr uint32_t vlan = 60; // u32: VLAN of the service, 1 to 4094; 0 untagged
inline constexpr uint32_t priority = 64; // u32: 802.1p priority, 0 to 7
inline constexpr uint32_t upstream = 68; // u32: maximum upstream rate, 1 to 1000000; 0 no limit
inline constexpr uint32_t downstream = 72; // u32: maximum downstream rate, 1 to 1000000; 0 no limit
inline constexpr uint32_t mac_limit = 76; // u32: MAC addresses that may be learnt, 1 to 1024; 0 no limit
} // namespace layout::profile_line_fetched

namespace layout::profile_sla
{
inline constexpr uint32_t name = 24; // text: name, at least one character: UTF-8 without control characters
inline constexpr uint32_t id = 56; // u32: number, 1 to 256, that no other of the kind has; 0: the profile keeps the one it has, and a new one gets the lowest that is free
inline constexpr uint32_t fixed = 60; // u32: fixed bandwidth, at most 1000000
inline constexpr uint32_t assured = 64; // u32: assured bandwidth beside the fixed, at most 1000000
inline constexpr uint32_t maximum = 68; // u32: maximum bandwidth, 1 to 1000000
inline constexpr uint32_t priority = 72; // u32: priority, 0 to 7
inline constexpr uint32_t weight = 76; // u32: weight, 1 to 100
} // namespace layout::profile_sla

namespace layout::profile_sla_fetched
{
inline constexpr uint32_t name = 24; // text: name, at least one character: UTF-8 without control characters
inline constexpr uint32_t id = 56; // u32: number, 1 to 256
inline constexpr uint32_t fixed = 60; // u32: fixed bandwidth, at most 1000000
inline constexpr uint32_t assured = 64; // u32: assured bandwidth beside the fixed, at most 1000000
inline constexpr uint32_t maximum = 68; // u32: maximum bandwidth, 1 to 1000000
inline constexpr uint32_t priority = 72; // u32: priority, 0 to 7
inline constexpr uint32_t weight = 76; // u32: weight, 1 to 100
} // namespace layout::profile_sla_fetched

namespace layout::profile_alarm
{
inline constexpr uint32_t name = 24; // text: name, at least one character: UTF-8 without control characters
inline constexpr uint32_t id = 56; // u32: number, 1 to 256, that no other of the kind has; 0: the profile keeps the one it has, and a new one gets the lowest that is free
inline constexpr uint32_t temperature_low = 60; // s32: low alarm threshold of the temperature, -40 to 120 degC
inline constexpr uint32_t temperature_high = 64; // s32: high alarm threshold of the temperature, -40 to 120 degC
inline constexpr uint32_t launch_power_low = 68; // s32: low alarm threshold of the launch power, -40 to 10 dBm
inline constexpr uint32_t launch_power_high = 72; // s32: high alarm threshold of the launch power, -40 to 10 dBm
inline constexpr uint32_t received_power_low = 76; // s32: low alarm threshold of the received power, -40 to 10 dBm
inline constexpr uint32_t received_power_high = 80; // s32: high alarm threshold of the received power, -40 to 10 dBm
} // namespace layout::profile_alarm

namespace layout::profile_alarm_fetched
{
inline constexpr uint32_t name = 24; // text: name, at least one character: UTF-8 without control characters
inline constexpr uint32_t id = 56; // u32: number, 1 to 256
inline constexpr uint32_t temperature_low = 60; // s32: low alarm threshold of the temperature, -40 to 120 degC
inline constexpr uint32_t temperature_high = 64; // s32: high alarm threshold of the temperature, -40 to 120 degC
inline constexpr uint32_t launch_power_low = 68; // s32: low alarm threshold of the launch power, -40 to 10 dBm
inline constexpr uint32_t launch_power_high = 72; // s32: high alarm threshold of the launch power, -40 to 10 dBm
inline constexpr uint32_t received_power_low = 76; // s32: low alarm threshold of the received power, -40 to 10 dBm
inline constexpr uint32_t received_power_high = 80; // s32: high alarm threshold of the received power, -40 to 10 dBm
} // namespace layout::profile_alarm_fetched

namespace layout::profile_name
{
inline constexpr uint32_t name = 24; // text: name of the profile
} // namespace layout::profile_name

namespace layout::profile_list_from
{
inline constexpr uint32_t from = 24; // u32: least number that is listed
} // namespace layout::profile_list_from

namespace layout::profile_list
{
inline constexpr uint32_t listed = 24; // u32: how many follow, at most 113
inline constexpr uint32_t id = 28; // u32: number
inline constexpr uint32_t id_every = 36; // from one id to the next
inline constexpr uint32_t name = 32; // text: name
inline constexpr uint32_t name_every = 36; // from one name to the next
} // namespace layout::profile_list

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
