// This record says how many events of the scenario's timeline have happened.
#pragma once

#include <cstdint>

#include "model/kept/family.h"

namespace ponsim
{

struct Timeline {
    uint32_t done = 0;
};

template <>
struct Family<Timeline> {
    static constexpr std::string_view table = "timeline";
    using Key = Only;
    static constexpr std::tuple key{OnlyColumn{}};
    static constexpr size_t most = 1;
    static constexpr std::tuple value{Column{"done", &Timeline::done}};
};

} // namespace ponsim
