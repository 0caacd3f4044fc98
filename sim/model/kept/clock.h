// Model time is kept, so that the OLT goes on where it stopped.
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
    // Model time is at most ten thousand years, which leaves room for what is to happen after it.
    static constexpr std::tuple value{Column{"now", &ModelClock::now, "? BETWEEN 0 AND 315360000000000"}};
    static constexpr bool placed = true;
};

} // namespace ponsim
