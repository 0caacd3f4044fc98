// This file writes the profiles of a kind as a text for a file.
#pragma once

#include <string>

#include "model/olt/olt.h"

namespace ponsim
{

std::string profile_table(const Olt &olt, ProfileKind kind);

// The text has a line with the number of profiles. Then each profile has a line with kind, id and name, and an indented
// line for each value. The text is never empty.
std::string profile_text(const Olt &olt, ProfileKind kind);

} // namespace ponsim
