// The profiles of a kind as a file holds them.
#pragma once

#include <string>

#include "model/olt/olt.h"

namespace ponsim
{

std::string profile_table(const Olt &olt, ProfileKind kind);

// A line with their number, then of each profile a line with kind, id and name, and an indented line a value. It is
// never empty.
std::string profile_text(const Olt &olt, ProfileKind kind);

} // namespace ponsim
