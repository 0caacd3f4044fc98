// The kinds of profiles are those for which the catalogue has commands: BSP_CMD_PROFILE_<KIND>_<ACTION>.
#pragma once

#include <string>
#include <vector>

namespace ponctl
{

// Returns each kind as a command line names it: in lower case, with hyphens between words.
std::vector<std::string> profile_kinds();

} // namespace ponctl
