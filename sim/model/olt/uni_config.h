// This file says how the UNI ports of ONUs are configured: what follows from the device, and which settings they have
// received since.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "model/olt/remote.h"

namespace ponsim
{

// Returns the configuration of each of the ONU's UNI ports, as the OLT has sent it or as the ONU has it.
std::vector<UniConfig> uni_configs(const Olt &olt, const RemoteOnu &onu, Side side);

// Returns the links of the ONU's UNI ports while the ONU is online. A port that is down has no link. A cable that makes
// a loop gives a port a link, too.
std::vector<std::optional<LinkMode>> uni_links(const Olt &olt, const RemoteOnu &onu);
// As above, for whoever has the configuration that the ONU has.
std::vector<std::optional<LinkMode>> uni_links(const Olt &olt, const RemoteOnu &onu,
                                               std::span<const UniConfig> configs);

// Returns whether the setting is a part of the configuration of a UNI port.
bool is_uni_config(const SettingKey &key);

// Returns a part of the configuration as a UNI port has it until it is configured. `command` is the command that
// queries the part.
OnuBlock default_block(const Olt &olt, const RemoteOnu &onu, uint32_t uni, uint32_t command);

// These return whether there can be such a block of a setting of UNI ports, whatever the ONU is. What a port offers
// must be of the abilities.
bool is_good_switch(const OnuBlock &block);
bool is_good_pause(const OnuBlock &block);
bool is_good_offer(const OnuBlock &block, std::span<const Ability> abilities);
bool is_good_rate_limit(const OnuBlock &block);
bool is_good_vlan(const OnuBlock &block);

// These also ask what the ONU is able to. They return why a block cannot be sent, or BSP_OK when it can.
uint32_t check_offer(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);
uint32_t check_vlan(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);

// Takes the VLANs of a block into a configuration.
void take_vlan(const OnuBlock &block, UniConfig &config);

// Returns what a UNI port can offer in auto-negotiation, in the form of the block that says what it offers.
OnuBlock abilities_block(const Uni &uni);

inline constexpr uint32_t switch_size = 4; // size of a word that is 0 or 1
inline constexpr uint32_t abilities_size = 24;
inline constexpr uint32_t pause_size = 1;
inline constexpr uint32_t rate_limit_size = 22;
inline constexpr uint32_t vlan_size = 159;

} // namespace ponsim
