// These are the tables of devices and of UNI ports. The handlers decide which ONUs they show.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/lifecycle/upgrade.h"
#include "model/olt/olt.h"
#include "model/plant/device.h"

namespace ponsim
{

struct BoundOnu {
    uint32_t pon_port;
    uint32_t onu_id;
    const Binding *binding;
    OnuState state;
    Device device;
    std::vector<UniConfig> configs;             // of the device's UNI ports, as the OLT has configured them
    std::vector<std::optional<LinkMode>> links; // of the UNI ports, while the ONU is online
    UpgradeProgress upgrade = {};               // only upgrade_table() reads this
};

// Returns the link of one of its UNI ports, as the ONU reports it. Returns nothing unless the ONU is online.
std::optional<std::string> link_text(OnuState state, const std::optional<LinkMode> &link);

// Returns the VLANs of a UNI port. Returns nothing when its mode has none.
std::optional<std::string> vlan_text(const UniConfig &config);

std::string capabilities_table(std::span<const BoundOnu> onus);
std::string upgrade_table(std::span<const BoundOnu> onus);
std::string uni_attributes_table(std::span<const BoundOnu> onus);
std::string onu_config_table(std::span<const BoundOnu> onus);
std::string uni_config_table(std::span<const BoundOnu> onus);

// A UniGroup holds the UNI ports that share a row: those of a PON port, those of an ONU, or a single one.
struct UniGroup {
    uint32_t pon_port;
    std::optional<uint32_t> onu_id;
    std::optional<uint32_t> uni;
    std::vector<UniConfig> configs;
};

std::string vlan_modes_table(std::span<const UniGroup> groups);
std::string vlan_lists_table(std::span<const UniGroup> groups);

} // namespace ponsim
