// This file reads how loads change over the day.
#pragma once

#include <map>
#include <string>

#include "scenario/scenario.h"
#include "scenario/section.h"

namespace ponsim
{

// Reads the points of the curves, by name.
std::map<std::string, std::vector<CurvePoint>> read_curves(const Section &root);

} // namespace ponsim
