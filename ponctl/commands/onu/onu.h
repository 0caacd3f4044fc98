// This file declares the parts of ponctl onu.
#pragma once

#include "cli/program.h"

namespace ponctl
{

inline constexpr const char *onu_set_help =
    "PON port and ids of its ONUs, as 1/5, 1/3-17,20 or 1/all (those that are bound)";

// Adds the commands that put ONUs on the blacklist and take them off.
void add_blacklisting(Command &onu);
// Adds the command that finds ONUs on all ports.
void add_find(Command &onu);
// Adds the command that says why an ONU is in its state.
void add_why(Command &onu);
// Adds the command that follows the states of ONUs.
void add_watch(Program &program, Command &onu);
// Adds the commands that bring many ONUs into service from a table, and write such a table.
void add_import(Command &onu);
// Adds the queries to remote ONUs. Returns the command that shows their images.
Command &add_queries(Command &onu);
// Adds the commands that configure remote ONUs. Those for images are added to `image`.
void add_settings(Command &onu, Command &image);

} // namespace ponctl
