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
    static constexpr std::tuple value{Column{"now", &ModelClock::now, {0, latest_time}}};
    static constexpr bool placed = true;
    static constexpr size_t most = 1;
};

} // namespace ponsim
