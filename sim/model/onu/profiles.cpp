#include "model/onu/profiles.h"

#include <algorithm>

#include "bsp_pon.h"
#include "generated/service_words.h"

namespace ponsim
{
namespace
{

uint32_t lowest_free_id(const std::map<uint32_t, Profile> &profiles)
{
    uint32_t id = 1;
    while (profiles.contains(id))
        ++id;
    return id;
}

} // namespace

std::optional<uint32_t> find_profile(const Olt &olt, ProfileKind kind, std::string_view name)
{
    for (const auto &[id, profile] : olt.profiles(kind))
        if (profile.name == name) return id;
    return std::nullopt;
}

Plan store_profile(const Olt &olt, ProfileKind kind, uint32_t id, const Profile &profile)
{
    if (id > max_profiles || !is_good(kind, profile)) return {PON_ERR_BAD_RECORD};
    const std::map<uint32_t, Profile> &kept = olt.profiles(kind);
    const std::optional<uint32_t> own = find_profile(olt, kind, profile.name);
    if (!own && kept.size() == max_profiles) return {PON_ERR_TABLE_FULL};
    if (id == 0) id = own.value_or(lowest_free_id(kept));
    if (id != own && kept.contains(id)) return {PON_ERR_ID_IN_USE};
    Change change;
    if (own && own != id) change.drop<Profile>({kind, *own});
    change.put<Profile>({kind, id}, profile);
    return {BSP_OK, std::move(change)};
}

Plan delete_profile(const Olt &olt, ProfileKind kind, std::string_view name)
{
    const std::optional<uint32_t> id = find_profile(olt, kind, name);
    if (!id) return {PON_ERR_NO_PROFILE};
    return {BSP_OK, removal_of<Profile>({kind, *id})};
}

} // namespace ponsim
