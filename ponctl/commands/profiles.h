// The kinds of profiles: those that the catalogue has commands for, BSP_CMD_PROFILE_<KIND>_<ACTION>.
#pragma once

#include <string>
#include <vector>

namespace ponctl
{

// Each as a command line calls it: in lower case, with hyphens between words.
std::vector<std::string> profile_kinds();

} // namespace ponctl
