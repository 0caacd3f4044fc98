// UNI profiles, and the configuration of UNI ports in one piece.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/onu/remote.h"

namespace ponsim
{

inline constexpr uint32_t max_uni_profiles = 32; // numbered from 1
inline constexpr uint32_t uni_profile_size = 67;

// What a UNI port is told in one piece: the number of the profile that this is from, or 0, and the profile's bytes.
inline constexpr uint32_t port_config_size = 1 + uni_profile_size;

// As what a port is told that takes it; none where there is no such profile.
std::optional<OnuBlock> uni_profile(const Olt &olt, uint32_t id);
// Keeps the profile, whose settings must make sense, or deletes it where there are none.
Plan set_uni_profile(const Olt &olt, uint32_t id, const std::optional<std::string> &settings);

// What a UNI port was last told in one piece; zeros where it never was.
OnuBlock port_config(const Olt &olt, const UniPlace &place);
// The UNI ports of bound ONUs that remember a profile, in order of PON port, ONU id and UNI port.
struct ProfileUser {
    uint32_t pon_port;
    uint32_t onu_id;
    uint32_t uni;
    OnuBlock config;

    uint32_t profile() const;
};
std::vector<ProfileUser> profile_users(const Olt &olt);

// A part of it in the form of the setting that it is, by the command that asks for that.
struct ConfigPart {
    uint32_t command;
    OnuBlock block;
};
std::array<ConfigPart, 5> parts_of(const OnuBlock &config);

} // namespace ponsim
