// Profiles: named sets of parameters, of several kinds, that are kept for those who configure ONUs. Nothing in the
// model follows them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "model/olt/olt.h"
#include "model/olt/plan.h"
#include "place.h"

namespace ponsim
{

inline constexpr uint32_t max_profiles = 256; // of a kind; their ids are 1 to this

struct ProfileField {
    std::string_view name;
    layout::At<int32_t> at; // in a record that carries the profile
    int32_t least;
    int32_t greatest;
    bool hundredths = false; // of its unit
};

std::string_view name_of(ProfileKind kind);
// In order of their offsets, without gaps.
std::span<const ProfileField> fields_of(ProfileKind kind);

// Whether the values can be: each of them, and together.
bool is_good(ProfileKind kind, const Profile &profile);

// The id of the profile of this name.
std::optional<uint32_t> find_profile(const Olt &olt, ProfileKind kind, std::string_view name);

// In the place of the profile of this name, if there is one. Of id 0: the id that it has, or else the lowest free one.
Plan store_profile(const Olt &olt, ProfileKind kind, uint32_t id, const Profile &profile);
Plan delete_profile(const Olt &olt, ProfileKind kind, std::string_view name);

} // namespace ponsim
