// This file has the options of commands that list rows.
#pragma once

#include <string_view>

#include "cli/program.h"

namespace ponctl
{

// Adds the options that choose rows and columns of what the command lists. The path names a command below `above`, as
// "list" or "perf on"; it may be empty.
void add_list_options(Program &program, command_line::Syntax &above, std::string_view path = {});

} // namespace ponctl
