// ONUs prove their identity with these LOIDs and passwords.
#pragma once

#include <cstdint>
#include <string>

#include "model/kept/family.h"

namespace ponsim
{

inline constexpr size_t max_auth_records = 128; // of each port
inline constexpr size_t max_loid = 24;
inline constexpr size_t max_password = 12;

struct LoidKey {
    uint32_t pon_port;
    std::string loid;

    auto operator<=>(const LoidKey &) const = default;
};

struct LoidPassword {
    std::string password; // empty: no password
};

template <>
struct Family<LoidPassword> {
    static constexpr std::string_view table = "auth";
    static constexpr AllColumns configured = all_columns;
    using Key = LoidKey;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"loid", &Key::loid, {1, max_loid}}};
    static constexpr std::tuple value{Column{"password", &LoidPassword::password, {0, max_password}}};
    static constexpr bool placed = true;
    static constexpr size_t most_of_port = max_auth_records;
    static constexpr size_t most = max_ports * most_of_port;
};

} // namespace ponsim
