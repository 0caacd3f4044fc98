// Finding operations by words, and by names that are not quite theirs.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue.h"

namespace call
{

// The operations that each of the words occurs in: in the name, the brief, the family, the class, or the command's
// name or code. Upper and lower case are the same.
std::vector<const catalogue::Operation *> find_operations(std::span<const std::string> words);
// The functions without a request that each of the words occurs in: in the name, the brief or the family.
std::vector<const catalogue::Function *> find_functions(std::span<const std::string> words);

// The operations that a wrong name may mean: those whose names hold every part of it; else the nearest, if one is near.
std::vector<std::string_view> near_operations(const std::string &name);

} // namespace call
