#include "cli/state_folder.h"

#include <cstdlib>

namespace ponctl
{

std::filesystem::path state_folder()
{
    const char *state = std::getenv("XDG_STATE_HOME"), *home = std::getenv("HOME");
    if (state && *state == '/') return std::filesystem::path(state) / "ponctl";
    return home && *home == '/' ? std::filesystem::path(home) / ".local/state/ponctl" : std::filesystem::path();
}

} // namespace ponctl
