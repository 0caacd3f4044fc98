// This file gives the pages and completions what they need of the command line.
#pragma once

#include <string>
#include <vector>

#include "command_line/command_tree.h"

namespace ponctl
{

using command_line::Operand;
using command_line::Syntax;

std::vector<const Syntax *> commands_of(const Syntax &command);

// Returns the words that a value may be, as far as the command line or the catalogue knows them.
std::vector<std::string> words_for(const Operand &operand);

enum class Completes { words, files, folders, operation_arguments };
Completes completes(const Operand &operand);

// Returns a text as a sentence: with a full stop at the end, and with the first letter in upper case unless it starts a
// name of the library.
std::string sentence(std::string text);

} // namespace ponctl
