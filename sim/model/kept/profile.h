// A profile is a named set of parameters. There are several kinds. Nothing in the model depends on profiles.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/kept/block.h"
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
    static constexpr AllColumns configured = all_columns;
    using Key = ProfileKey;
    static constexpr std::tuple key{Column{"kind", &Key::kind, {1, profile_kinds}},
                                    Column{"id", &Key::id, {1, max_profiles}}};
    static constexpr std::tuple value{Column{"name", &Profile::name},
                                      BytesColumn{"fields", &Profile::values, {0, longest_block}}};
    static constexpr std::string_view unique = "kind, name";
    static constexpr bool placed = true;
    static constexpr size_t most = profile_kinds * max_profiles;

    class Check
    {
    public:
        const char *operator()(uint32_t, const Key &key, const Profile &profile)
        {
            if (!is_good(key.kind, profile)) return "there is no such profile of its kind";
            const bool first = names.insert({key.kind, profile.name}).second;
            return first ? nullptr : "two profiles of a kind have the same name";
        }

    private:
        std::set<std::pair<ProfileKind, std::string>> names;
    };
};

} // namespace ponsim
