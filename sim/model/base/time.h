// This is model time. The OLT uses no other clock.
#pragma once

#include <cstdint>

namespace ponsim
{

using ModelTime = uint64_t; // ms since the OLT was first switched on

inline constexpr ModelTime ms_per_second = 1000;

} // namespace ponsim
