// This file holds UNI profiles, and the configuration of a UNI port as one block.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/olt/remote.h"

namespace ponsim
{

inline constexpr uint32_t max_uni_profiles = 32; // numbered from 1
inline constexpr uint32_t uni_profile_size = 67;

// The configuration of a UNI port has the number of the profile from which it is, or 0, and then the profile's bytes.
inline constexpr uint32_t port_config_size = 1 + uni_profile_size;

// Returns the profile as the configuration of a port that takes it. Returns none where there is no such profile.
std::optional<OnuBlock> uni_profile(const Olt &olt, uint32_t id);
// Keeps the profile, whose settings must be valid, or deletes it when no settings are given.
Plan set_uni_profile(const Olt &olt, uint32_t id, const std::optional<std::string> &settings);

// Returns the configuration that a UNI port last received as one block. It is zero when the port never received one.
OnuBlock port_config(const Olt &olt, const UniKey &key);
// A ProfileUser is a UNI port of a bound ONU that remembers a profile. profile_users() returns them in the order of PON
// port, ONU id and UNI port.
struct ProfileUser {
    uint32_t pon_port;
    uint32_t onu_id;
    uint32_t uni;
    OnuBlock config;

    uint32_t profile() const;
};
std::vector<ProfileUser> profile_users(const Olt &olt);

// A ConfigPart is a part of the configuration in the form of the setting that it is, with the command that queries this
// setting.
struct ConfigPart {
    uint32_t command;
    OnuBlock block;
};
std::array<ConfigPart, 5> parts_of(const OnuBlock &config);
// Returns whether there can be an ONU that accepts this configuration.
bool is_good_config(const OnuBlock &config);

} // namespace ponsim
