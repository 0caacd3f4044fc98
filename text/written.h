// These are values that files and command lines write as texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace text
{

// Times are milliseconds, of ten years at most.
inline constexpr uint64_t longest_time = 10ull * 365 * 24 * 3600 * 1000;

// Reads a text such as 1h 30min. Returns no time when the text is not a time, or when the time is too long.
std::optional<uint64_t> read_time(std::string_view text);
// Writes the length of a time as files write it: 1h 30min.
std::string time_text(uint64_t time);

// A list has at most so many numbers.
inline constexpr size_t longest_list = 10000;

// Reads numbers and ranges such as 1-4,7, of which each number comes once. Returns nothing when the text is no such
// list, or when a number is out of bounds.
std::optional<std::vector<uint64_t>> read_numbers(std::string_view text, uint64_t least, uint64_t greatest);

// A name has at most so many letters, digits, '-', '_' and '.', of which the first is a letter or a digit.
inline constexpr size_t longest_name = 32;
bool is_name(std::string_view text);

} // namespace text
