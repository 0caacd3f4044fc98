// This file reads how loads change over the day.
#pragma once

#include <map>
#include <string>

#include "scenario/scenario.h"
#include "toml_file/section.h"

namespace ponsim
{

// Reads the points of the curves, by name.
std::map<std::string, std::vector<CurvePoint>> read_curves(const toml_file::Section &root);

} // namespace ponsim
