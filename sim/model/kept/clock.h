// Model time.
#pragma once

#include "model/base/time.h"
#include "model/kept/family.h"

namespace ponsim
{

struct ModelClock {
    ModelTime now;
};

template <>
struct Family<ModelClock> {
    static constexpr std::string_view table = "clock";
    using Key = Only;
    static constexpr std::tuple key{OnlyColumn{}};
    // At most ten thousand years, which leaves room for what is to happen after.
    static constexpr std::tuple value{Column{"now", &ModelClock::now, "? BETWEEN 0 AND 315360000000000"}};
    static constexpr bool placed = true;
};

} // namespace ponsim
