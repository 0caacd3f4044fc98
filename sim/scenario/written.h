// These are values that scenarios and command lines write as texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/base/time.h"

namespace ponsim
{

// A scenario can state times up to ten years.
inline constexpr ModelTime longest_time = 10ull * 365 * 24 * 3600 * ms_per_second;

// Reads a text such as 1h 30min. Returns no time when the text is not a time, or when the time is too long.
std::optional<ModelTime> read_time(std::string_view text);
// Writes the length of a time as scenarios write it: 1h 30min.
std::string time_text(ModelTime time);

// A list has at most so many numbers.
inline constexpr size_t longest_list = 10000;

// Reads numbers and ranges such as 1-4,7, of which each number comes once. Returns nothing when the text is no such
// list, or when a number is out of bounds.
std::optional<std::vector<uint64_t>> read_numbers(std::string_view text, uint64_t least, uint64_t greatest);

} // namespace ponsim
