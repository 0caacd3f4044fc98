// A scenario is composed of a text, the files that it includes, and values for its variables.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/scenario.h"
#include "toml_file/toml.h"

namespace ponsim
{

struct Composition {
    toml_file::Value table; // without includes and variables
    std::string text;       // makes the same table, and needs no files and no values
};

// Reads a text that is that of a file. Only a file can include others: they are named as they are seen from its folder.
// Throws ScenarioError.
Composition compose(std::string_view text, const std::string &file, bool is_file, const Overrides &overrides);

// Returns the content of a file. Throws ScenarioError with the reason when it cannot be read.
std::string text_of_file(const std::string &file);

} // namespace ponsim
