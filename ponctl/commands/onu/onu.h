// The parts of ponctl onu.
#pragma once

#include "cli/program.h"

namespace ponctl
{

inline constexpr const char *onu_set_help =
    "PON port and ids of its ONUs, as 1/5, 1/3-17,20 or 1/all (those that are bound)";

// What puts ONUs on the black list and takes them off.
void add_black_list(Command &onu);
// What remote ONUs are asked. Returns the command that shows their images.
Command &add_queries(Command &onu);
// What they are told; `image`: the command that has those for images.
void add_settings(Command &onu, Command &image);

} // namespace ponctl
