// This is the table of what loop detection has found.
#pragma once

#include <string>

#include "model/olt/olt.h"

namespace ponsim
{

std::string loop_table(const Olt &olt);

} // namespace ponsim
