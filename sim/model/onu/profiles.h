// Profiles that are kept for those who configure ONUs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

// The id of the profile of this name.
std::optional<uint32_t> find_profile(const Olt &olt, ProfileKind kind, std::string_view name);

// In the place of the profile of this name, if there is one. Of id 0: the id that it has, or else the lowest free one.
Plan store_profile(const Olt &olt, ProfileKind kind, uint32_t id, const Profile &profile);
Plan delete_profile(const Olt &olt, ProfileKind kind, std::string_view name);

} // namespace ponsim
