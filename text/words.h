// This file works on words in a text, and finds the name nearest to a misspelt one.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace text
{

std::string lower_case(std::string_view text);
std::string upper_case(std::string_view text);

// join() puts a separator between the words, and the reverse function splits a text into words.
std::string join(std::span<const std::string_view> words, std::string_view separator = ", ");
std::string join(const std::vector<std::string> &words, std::string_view separator = ", ");
std::vector<std::string> split(std::string_view text, char separator);

std::string replaced(std::string_view text, std::string_view what, std::string_view by);

// Returns the name nearest to `wrong`, or an empty text when no name is near.
std::string_view nearest(std::string_view wrong, std::span<const std::string_view> names);

// Returns "; did you mean NAME?", or nothing when no name is near.
std::string suggestion(std::string_view wrong, std::span<const std::string_view> names);

} // namespace text
