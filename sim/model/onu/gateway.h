// This file describes what ONUs do for their users: WAN connections, WLANs, CATV, voice, access control and DHCP. Until
// an ONU is configured, what it has of these follows from the OLT's seed and the ONU's MAC address.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/olt/remote.h"
#include "model/onu/gateway_settings.h"

namespace ponsim
{

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
