// This file prints a program's command line for people, in lines that fit a terminal.
#pragma once

#include <string>

#include "command_line/command_tree.h"

namespace command_line
{

std::string help_of(const Syntax &command);

// Each function explains what is wrong with a command line that got to `command`, and where to look up what is right.
std::string explain_unknown(const Syntax &command, const std::string &word);
std::string explain_no_command(const Syntax &command);
std::string explain(const Syntax &command, const std::string &what_is_wrong);

} // namespace command_line
