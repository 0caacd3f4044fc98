// This file reads which parts of an OLT's plant fail by chance.
#pragma once

#include "scenario/scenario.h"
#include "toml_file/section.h"

namespace ponsim
{

// Reads the failures, and gives each OLT its parts.
void read_failures(const toml_file::Section &root, Scenario &scenario);

} // namespace ponsim
