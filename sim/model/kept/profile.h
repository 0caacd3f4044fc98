// A profile is a named set of parameters. There are several kinds. Nothing in the model depends on profiles.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/kept/family.h"
#include "place.h"

namespace ponsim
{

enum class ProfileKind : uint32_t { line = 1, sla, alarm };
inline constexpr uint32_t profile_kinds = 3;

// A Profile is a named set of parameters.
struct Profile {
    std::string name;
    std::vector<int32_t> values; // in the order of its kind's fields

    bool operator==(const Profile &) const = default;
};

inline constexpr uint32_t max_profiles = 256; // of each kind; ids run from 1 to this number

struct ProfileField {
    std::string_view name;
    layout::At<int32_t> at; // where a record that carries the profile has it
    int32_t least;
    int32_t greatest;
    bool hundredths = false; // the value is in hundredths of the unit
};

std::string_view name_of(ProfileKind kind);
// Returns the fields in the order of their offsets, which have no gaps.
std::span<const ProfileField> fields_of(ProfileKind kind);

// Returns whether each value is allowed, and whether the values are allowed together.
bool is_good(ProfileKind kind, const Profile &profile);

struct ProfileKey {
    ProfileKind kind;
    uint32_t id;

    auto operator<=>(const ProfileKey &) const = default;
};

template <>
struct Family<Profile> {
    static constexpr std::string_view table = "profile";
    using Key = ProfileKey;
    static constexpr std::tuple key{Column{"kind", &Key::kind}, Column{"id", &Key::id}};
    static constexpr std::tuple value{Column{"name", &Profile::name},
                                      BytesColumn{"fields", &Profile::values, "a profile"}};
    static constexpr std::string_view unique = "kind, name";
    static constexpr bool placed = true;

    struct Check {
        const char *operator()(uint32_t, const Key &key, const Profile &profile) const
        {
            const bool known = key.kind >= ProfileKind::line && key.kind <= ProfileKind::alarm && key.id >= 1 &&
                               key.id <= max_profiles;
            return known && is_good(key.kind, profile) ? nullptr : "a profile in it is damaged";
        }
    };
};

} // namespace ponsim
