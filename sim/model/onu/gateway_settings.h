// These are the blocks that configure what ONUs do for their users: WAN connections, WLANs, access control and DHCP.
// Each is checked here as far as it does not matter which ONU it is for.
#pragma once

#include <cstdint>

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

// These return whether there can be such a block. The block of a connection or a rule is zero when it was removed.
bool is_good_wan(const OnuBlock &block);
bool is_good_wlan(const OnuBlock &block);
bool is_good_acl_rule(const OnuBlock &block);
bool is_good_dhcp(const OnuBlock &block);

} // namespace ponsim
