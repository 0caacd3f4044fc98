// This file declares the pages of the manual. Each page is a text.
#pragma once

#include <string>

#include "command_line/command_tree.h"
#include "pages/prose.h"

namespace ponctl
{

std::string overview_page(const command_line::Syntax &program, Prose &prose, const std::string &date);
// Returns the page of a command of the program with all commands below it.
std::string group_page(const command_line::Syntax &command, Prose &prose, const std::string &date);
std::string operations_page(const std::string &date);

} // namespace ponctl
