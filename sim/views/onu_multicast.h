// These are the views of multicast at an ONU.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/onu/multicast_settings.h"

namespace ponsim
{

struct UniMulticast {
    uint32_t group_max;
    McTags tags;
    std::vector<Vlan> translations; // the network VLAN is the multicast VLAN
    std::vector<uint32_t> vlans;
    std::optional<uint32_t> groups; // how many; none unless the ONU is online
};

struct OnuMulticast {
    uint32_t pon_port;
    uint32_t onu_id;
    const DeviceType *type;
    bool controlled; // false: it snoops
    bool fast_leave;
    std::vector<UniMulticast> unis;
};

std::string mc_config_table(const OnuMulticast &onu);
std::string uni_mc_config_table(const OnuMulticast &onu);
std::string mc_translation_table(const OnuMulticast &onu, uint32_t uni);
std::string mc_vlan_table(const OnuMulticast &onu);

} // namespace ponsim
