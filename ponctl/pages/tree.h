// What pages and completions need of the command line.
#pragma once

#include <string>
#include <vector>

#include "command_line/command_tree.h"

namespace ponctl
{

using command_line::Operand;
using command_line::Syntax;

std::vector<const Syntax *> commands_of(const Syntax &command);

// The words that a value is one of, as far as the command line or the catalogue knows them.
std::vector<std::string> words_for(const Operand &operand);

enum class Completes { words, files, folders, operation_arguments };
Completes completes(const Operand &operand);

// First letter in upper case, unless it is that of a name of the library; a full stop at the end.
std::string sentence(std::string text);

} // namespace ponctl
