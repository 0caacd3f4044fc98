// The tables of devices and of UNI ports. They show what they are given: which ONUs that is, the handlers decide.
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
    std::vector<UniConfig> configs;             // of the device's UNI ports, as the OLT told it
    std::vector<std::optional<LinkMode>> links; // of these, while the ONU is online
    UpgradeProgress upgrade = {};               // read by upgrade_table() alone
};

// Of one of its UNI ports, as the ONU reports it: nothing unless it is online.
std::optional<std::string> link_text(OnuState state, const std::optional<LinkMode> &link);

// The VLANs of a UNI port; nothing where its mode has none.
std::optional<std::string> vlan_text(const UniConfig &config);

std::string capabilities_table(std::span<const BoundOnu> onus);
std::string upgrade_table(std::span<const BoundOnu> onus);
std::string uni_attributes_table(std::span<const BoundOnu> onus);
std::string onu_config_table(std::span<const BoundOnu> onus);
std::string uni_config_table(std::span<const BoundOnu> onus);

// UNI ports that share a row: those of a PON port, those of an ONU, or a single one.
struct UniGroup {
    uint32_t pon_port;
    std::optional<uint32_t> onu_id;
    std::optional<uint32_t> uni;
    std::vector<UniConfig> configs;
};

std::string vlan_modes_table(std::span<const UniGroup> groups);
std::string vlan_lists_table(std::span<const UniGroup> groups);

} // namespace ponsim
