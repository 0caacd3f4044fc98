// These are the tables of what ONUs do for their users.
#pragma once

#include <span>
#include <string>

#include "model/onu/gateway.h"

namespace ponsim
{

// These are tables of an ONU that is online.
std::string wan_table(const UserServices &onu, uint32_t index); // 0: all connections
std::string wlan_table(const UserServices &onu);
std::string catv_table(const UserServices &onu);
std::string voip_table(const UserServices &onu);
std::string acl_table(const UserServices &onu);
std::string dhcp_table(const UserServices &onu);

// These are tables of the ONUs of a PON port.
std::string wlans_of_port_table(std::span<const UserServices> onus);
std::string wans_of_port_table(std::span<const UserServices> onus);
std::string catv_of_port_table(std::span<const UserServices> onus);
std::string sip_of_port_table(std::span<const UserServices> onus);

} // namespace ponsim
