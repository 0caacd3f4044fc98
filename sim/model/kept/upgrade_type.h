// An upgrade type says which firmware goes to which kind of ONU. Upgrade types are found by name.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "model/kept/family.h"

namespace ponsim
{

inline constexpr size_t max_upgrade_types = 32;
inline constexpr size_t longest_type_name = 31;
inline constexpr Bounds image_sizes{1, std::numeric_limits<uint32_t>::max()}; // bytes

struct UpgradeType {
    std::string vendor;
    std::string model;
    std::string version;
    uint32_t size; // bytes
    std::string file;

    bool operator==(const UpgradeType &) const = default;
};

// Returns whether the text can be a software version.
bool is_version(const std::string &text);

// Returns whether the type is possible: its texts are short enough for the layout, and name, vendor, model and version
// are words.
bool is_good(const std::string &name, const UpgradeType &type);

template <>
struct Family<UpgradeType> {
    static constexpr std::string_view table = "upgrade_type";
    static constexpr AllColumns configured = all_columns;
    using Key = std::string;
    static constexpr size_t most = max_upgrade_types;
    static constexpr std::tuple key{Itself<Key>{"name"}};
    static constexpr std::tuple value{Column{"vendor", &UpgradeType::vendor}, Column{"model", &UpgradeType::model},
                                      Column{"version", &UpgradeType::version},
                                      Column{"size", &UpgradeType::size, image_sizes},
                                      Column{"file", &UpgradeType::file}};

    struct Check {
        const char *operator()(uint32_t, const Key &name, const UpgradeType &type) const
        {
            return is_good(name, type) ? nullptr : "there is no such upgrade type";
        }
    };
};

} // namespace ponsim
