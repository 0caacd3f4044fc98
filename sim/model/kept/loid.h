// ONUs prove their identity with these LOIDs and passwords.
#pragma once

#include <cstdint>
#include <string>

#include "model/kept/family.h"

namespace ponsim
{

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
    using Key = LoidKey;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"loid", &Key::loid}};
    static constexpr std::tuple value{Column{"password", &LoidPassword::password}};
    static constexpr bool placed = true;
};

} // namespace ponsim
