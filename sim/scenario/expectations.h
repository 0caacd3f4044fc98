// This file reads what a scenario expects.
#pragma once

#include "scenario/scenario.h"
#include "toml_file/section.h"

namespace ponsim
{

// Reads the expectations, and gives each OLT those that concern it.
void read_expectations(const toml_file::Section &root, Scenario &scenario);

} // namespace ponsim
