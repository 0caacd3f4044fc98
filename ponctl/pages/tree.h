// This file gives the pages what they need of the command line.
#pragma once

#include <string>
#include <vector>

#include "command_line/command_tree.h"

namespace ponctl
{

using command_line::Operand;
using command_line::Syntax;

std::vector<const Syntax *> commands_of(const Syntax &command);

// Returns a text as a sentence: with a full stop at the end, and with the first letter in upper case unless it starts a
// name of the library.
std::string sentence(std::string text);

} // namespace ponctl
