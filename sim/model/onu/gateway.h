// This file describes what ONUs do for their users: WAN connections, WLANs, CATV, voice, access control and DHCP. Until
// an ONU is configured, what it has of these follows from the OLT's seed and the ONU's MAC address.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/olt/remote.h"

namespace ponsim
{

// An ONU has so many of each at most, numbered from 1.
inline constexpr uint32_t max_wans = 8;
inline constexpr uint32_t max_wlans = 4;
inline constexpr uint32_t max_acl_rules = 8;

// These are the sizes of the blocks that configure ONUs.
inline constexpr uint32_t wan_size = 44;
inline constexpr uint32_t wlan_size = 37;
inline constexpr uint32_t acl_size = 24;
inline constexpr uint32_t dhcp_size = 24;

// The values are those that blocks have.
enum WanMode : uint8_t { wan_removed = 0, wan_bridge = 1, wan_route = 2 };
enum WanService : uint8_t { wan_internet = 1, wan_voice = 2, wan_management = 3, wan_other = 4 };
enum WanIpMode : uint8_t { ip_none = 0, ip_static = 1, ip_dhcp = 2, ip_pppoe = 3 };
enum WlanSecurity : uint8_t { wlan_open = 0, wlan_wpa2 = 1, wlan_wpa2_wpa3 = 2, wlan_wpa3 = 3 };
enum AclAction : uint8_t { acl_removed = 0, acl_permit = 1, acl_deny = 2 };
enum AclDirection : uint8_t { acl_upstream = 1, acl_downstream = 2 };
enum IpProtocol : uint8_t { ip_tcp = 6, ip_udp = 17 };

// WAN connections lease their addresses from this network.
inline constexpr uint32_t lease_network = 0x64400000; // 100.64.0.0
inline constexpr uint32_t lease_mask = 0xffc00000;
inline constexpr uint32_t lease_gateway = lease_network + 1;

// `sent` is the block that the OLT has sent to the ONU.
struct Wan {
    uint32_t index;
    OnuBlock sent;
    bool up;                       // the ONU is online, and has received its setting
    std::optional<uint32_t> lease; // address that the connection leases while it is up
};
struct Wlan {
    uint32_t index;
    OnuBlock sent;
    uint32_t clients;
};
struct Catv {
    bool on;
    double input; // dBm
};
struct VoicePort {
    uint32_t pots;
    std::string user;
    std::string server;
    bool registered;
};
struct AclRule {
    uint32_t index;
    OnuBlock sent;
};
struct DhcpServer {
    OnuBlock sent;
    uint32_t leases;
};

// What an ONU reports is valid only while it is online.
struct UserServices {
    uint32_t pon_port;
    uint32_t onu_id;
    bool online;
    std::vector<Wan> wans;
    std::vector<Wlan> wlans;
    std::optional<Catv> catv;
    std::vector<VoicePort> voice;
    std::vector<AclRule> acl;
    std::optional<DhcpServer> dhcp;
};
UserServices user_services(const Olt &olt, const RemoteOnu &onu);

// Returns whether the ONU routes, and has a WLAN, an access control list and a DHCP server.
bool is_gateway_onu(const RemoteOnu &onu);

// These return what an ONU has until it is configured. The block is zero where there is no connection or rule of this
// number.
OnuBlock first_wan(const Olt &olt, const RemoteOnu &onu, uint32_t index);
OnuBlock first_wlan(const Olt &olt, const RemoteOnu &onu, uint32_t index);
OnuBlock first_acl_rule(const Olt &olt, const RemoteOnu &onu, uint32_t index);
OnuBlock first_dhcp(const Olt &olt, const RemoteOnu &onu, uint32_t);

} // namespace ponsim
