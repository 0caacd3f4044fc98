// These are the tables of the UNI ports of one ONU.
#pragma once

#include <string>

#include "views/devices.h"

namespace ponsim
{

// A UniLink is the row of one UNI port's link.
struct UniLink {
    bool enabled;
    std::optional<std::string> link;
    bool shut; // by loop detection
};

std::string onu_links_table(std::span<const UniLink> unis);

std::string onu_vlans_table(uint32_t pon_port, uint32_t onu_id, std::span<const UniConfig> configs);

} // namespace ponsim
