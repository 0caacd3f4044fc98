// This file reads what a scenario expects.
#pragma once

#include "scenario/scenario.h"
#include "scenario/section.h"

namespace ponsim
{

// Reads the expectations, and gives each OLT those that concern it.
void read_expectations(const Section &root, Scenario &scenario);

} // namespace ponsim
