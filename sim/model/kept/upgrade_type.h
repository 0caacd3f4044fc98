// An upgrade type says which firmware goes to which kind of ONU. Upgrade types are found by name.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "model/kept/family.h"

namespace ponsim
{

inline constexpr size_t max_upgrade_types = 32;
inline constexpr Bounds image_sizes{1, std::numeric_limits<uint32_t>::max()}; // bytes

struct UpgradeType {
    std::string vendor;
    std::string model;
    std::string version;
    uint32_t size; // bytes
    std::string file;

    bool operator==(const UpgradeType &) const = default;
};

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
};

} // namespace ponsim
