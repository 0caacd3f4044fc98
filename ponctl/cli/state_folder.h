// This file says where the tool keeps what is the user's own.
#pragma once

#include <filesystem>

namespace ponctl
{

// Returns $XDG_STATE_HOME/ponctl, or ~/.local/state/ponctl. The path is empty when the user has no home.
std::filesystem::path state_folder();

} // namespace ponctl
