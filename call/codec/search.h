// This file finds operations by words, and by names that are not quite correct.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue.h"

namespace call
{

// Returns the operations in which each of the words occurs: in the name, the brief, the family, the class, or the
// command's name or code. Upper and lower case are the same.
std::vector<const catalogue::Operation *> find_operations(std::span<const std::string> words);
// Returns the functions without a request in which each of the words occurs: in the name, the brief or the family.
std::vector<const catalogue::Function *> find_functions(std::span<const std::string> words);

// Returns the operations that a wrong name may mean: those whose names hold every part of it. If there are none,
// returns the nearest one, if one is near.
std::vector<std::string_view> near_operations(const std::string &name);

} // namespace call
