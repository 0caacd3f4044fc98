// This file makes one table of what can stand at each position of a command line. A few lines of each shell search it.
#pragma once

#include <string>
#include <vector>

#include "command_line/command_tree.h"

namespace ponctl
{

struct Candidate {
    std::string word, about;
};

// A Position has the words that can stand at one position of a command line. In place of words it may have @files,
// @folders or @arguments, which are the arguments of an operation. These are the keys:
//   commands:COMMAND          the commands of a command, which is empty for the program
//   options:COMMAND           its options
//   value:COMMAND:OPTION      the value of an option that takes one
//   argument:COMMAND:NUMBER   an argument, from 1 on
//   argument:COMMAND:more     all arguments from the last one on
//   operation:OPERATION       the arguments of an operation
struct Position {
    std::string key;
    std::vector<Candidate> candidates;
};

std::vector<Position> positions_of(const command_line::Syntax &program);

// These return the table as a function of a shell. The lines that search it follow the table.
std::string bash_table(const std::vector<Position> &positions);
std::string zsh_table(const std::vector<Position> &positions);
std::string fish_table(const std::vector<Position> &positions);

} // namespace ponctl
