// This is model time. The OLT uses no other clock.
#pragma once

#include <cstdint>

namespace ponsim
{

using ModelTime = uint64_t; // ms since the OLT was first switched on

inline constexpr ModelTime ms_per_second = 1000;

// Model time is at most ten thousand years, which leaves room for what is to happen after it.
inline constexpr ModelTime latest_time = 315360000000000;
inline constexpr ModelTime greatest_time = 2 * latest_time;

} // namespace ponsim
