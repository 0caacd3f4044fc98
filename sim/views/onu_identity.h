// These are the tables of what ONUs are.
#pragma once

#include <span>
#include <string>

#include "model/onu/onu_identity.h"

namespace ponsim
{

// Shows the UNI ports of one ONU, from port 1 on. Their links are shown while the ONU is online.
std::string onu_unis_table(std::span<const OnuUni> unis, bool online);
std::string onu_serial_numbers_table(std::span<const RemoteOnu> onus);

} // namespace ponsim
