// How the UNI ports of ONUs are configured: what follows from the device, and what they were told since.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/onu/remote.h"

namespace ponsim
{

// Of each of the ONU's UNI ports, as the OLT told it or as the ONU has it.
std::vector<UniConfig> uni_configs(const Olt &olt, const RemoteOnu &onu, Side side);

// The links of the ONU's UNI ports, while it is online; none of a port that is down.
std::vector<std::optional<LinkMode>> uni_links(const Olt &olt, const RemoteOnu &onu);

// A part of the configuration, by the command that asks for it, as a UNI port has it until it is told otherwise.
OnuBlock default_block(const Olt &olt, const RemoteOnu &onu, uint32_t uni, uint32_t command);

// Of settings of UNI ports: why a block cannot be told; BSP_OK when it can.
uint32_t check_word(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);
uint32_t check_pause(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);
uint32_t check_offered(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);
uint32_t check_rate_limit(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);
uint32_t check_vlan(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block);

// Takes what a block of VLANs says into a configuration.
void take_vlan(const OnuBlock &block, UniConfig &config);

// What a UNI port can offer in auto-negotiation, in the form of what it offers.
OnuBlock abilities_block(const Uni &uni);

inline constexpr uint32_t switch_size = 4; // of a word that is 0 or 1
inline constexpr uint32_t abilities_size = 24;
inline constexpr uint32_t rate_limit_size = 22;
inline constexpr uint32_t vlan_size = 159;

} // namespace ponsim
