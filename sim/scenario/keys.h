// The keys that the tables of a scenario may have.
#pragma once

#include "toml_file/section.h"

namespace ponsim
{

// Returns the keys of the scenario itself.
const toml_file::Keys &scenario_keys();

} // namespace ponsim
