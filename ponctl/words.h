// Finding operations by words, or by a name.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue.h"

namespace ponctl
{

// The operations that each of the words occurs in: in the name, the brief, the family, the class, or the command's
// name or code. Upper and lower case are the same.
std::vector<const catalogue::Operation *> find_operations(std::span<const std::string> words);
// The functions without a request that each of the words occurs in: in the name, the brief or the family.
std::vector<const catalogue::Function *> find_functions(std::span<const std::string> words);

// The only operation that find_operations finds; a UsageError with the candidates where there is not exactly one.
const catalogue::Operation &chosen_operation(std::span<const std::string> words);

// The operation of this name; a UsageError with suggestions where there is none.
const catalogue::Operation &named_operation(const std::string &name);

} // namespace ponctl
