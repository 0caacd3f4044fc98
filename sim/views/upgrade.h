// This is the table of upgrade types.
#pragma once

#include <string>

#include "model/lifecycle/upgrade.h"

namespace ponsim
{

std::string upgrade_types_table(const UpgradeTypes &types);

} // namespace ponsim
