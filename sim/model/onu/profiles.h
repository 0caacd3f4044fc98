// Profiles are kept for whoever configures ONUs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Returns the id of the profile of this name.
std::optional<uint32_t> find_profile(const Olt &olt, ProfileKind kind, std::string_view name);

// Stores the profile, and replaces the profile of this name if there is one. With id 0 it gets the id of that profile
// or, when there is none, the lowest free id.
Plan store_profile(const Olt &olt, ProfileKind kind, uint32_t id, const Profile &profile);
Plan delete_profile(const Olt &olt, ProfileKind kind, std::string_view name);

} // namespace ponsim
