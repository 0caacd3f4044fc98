// Words in a text, and the nearest name to a misspelt one.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace text
{

std::string lower_case(std::string_view text);
std::string upper_case(std::string_view text);

// The words with a separator between them, and back.
std::string join(std::span<const std::string_view> words, std::string_view separator = ", ");
std::string join(const std::vector<std::string> &words, std::string_view separator = ", ");
std::vector<std::string> split(std::string_view text, char separator);

std::string replaced(std::string_view text, std::string_view what, std::string_view by);

// The name nearest to `wrong`; empty where none is near.
std::string_view nearest(std::string_view wrong, std::span<const std::string_view> names);

// "; did you mean NAME?", or nothing where no name is near.
std::string suggestion(std::string_view wrong, std::span<const std::string_view> names);

} // namespace text
